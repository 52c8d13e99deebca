#pragma once

#include <QTranslator>

namespace tracksmith::forms {

/// The German wordings of what Qt's own windows say: file dialogs, menus of text fields, names of
/// keys. Rarer texts come from Qt's translation, where that is installed.
class QtGerman : public QTranslator {
    Q_OBJECT

public:
    QtGerman();

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
};

} // namespace tracksmith::forms

#pragma once

#include "base/text.h"
#include <QWidget>

namespace tracksmith::forms {

/// Covers a window while a file is dragged over it that may be dropped: a frame in the accent
/// colour and a line that says what dropping does.
class DropHint : public QWidget {
    Q_OBJECT

public:
    explicit DropHint(QWidget& window);

    /// Covers the window for a file of that name, in `language`.
    void ShowFile(const QString& fileName, std::size_t more, Language language);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget& window_;
    QString line_;
};

} // namespace tracksmith::forms

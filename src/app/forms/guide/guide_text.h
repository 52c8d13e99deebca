#pragma once

#include <filesystem>
#include <vector>

#include <QTextBrowser>

namespace tracksmith::forms {

/// A heading of the guide.
struct GuideHeading {
    QString text;
    /// 1 for the title.
    int level = 0;
    /// Its place in the document.
    int block = 0;
};

/// The page of the user guide: text with pictures, links between its sections.
class GuideText : public QTextBrowser {
    Q_OBJECT

public:
    explicit GuideText(QWidget* parent = nullptr);

    /// Shows the Markdown file `file` with the pictures beside it; false when it cannot be read.
    bool Read(const std::filesystem::path& file);

    const std::vector<GuideHeading>& Headings() const { return headings_; }

    /// Number of the heading that `link` ("#first-steps") leads to, in the way that such links are
    /// made from headings everywhere; -1 for none.
    int HeadingOfLink(const QString& link) const;

    /// Scrolls a heading to the top.
    void ShowHeading(int number);

    /// Number of the heading whose section is at the top; -1 for an empty page.
    int HeadingAtTop() const;

    QVariant loadResource(int type, const QUrl& name) override;

private:
    double TopOf(const GuideHeading& heading) const;

    std::vector<GuideHeading> headings_;
};

} // namespace tracksmith::forms

#include "app/forms/guide/guide_text.h"

#include <algorithm>

#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>

namespace tracksmith::forms {
namespace {

// "#where-files-are"
QString LinkOf(const QString& heading) {
    QString link = QStringLiteral("#");
    for (const QChar each : heading.toLower()) {
        if (each.isLetterOrNumber() || each == u'-' || each == u'_') {
            link += each;
        } else if (each.isSpace()) {
            link += u'-';
        }
    }
    return link;
}

// Thin lines, and room between them and the text.
void FormatTables(QTextDocument& document, const QColor& lines) {
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame); table != nullptr) {
            QTextTableFormat format = table->format();
            format.setCellPadding(Gap() * 2.0 / 3);
            format.setCellSpacing(0);
            format.setBorderCollapse(true);
            format.setBorder(1);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setBorderBrush(lines);
            table->setFormat(format);
        }
    }
}

} // namespace

GuideText::GuideText(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false); // the window keeps where the reader has been
}

bool GuideText::Read(const std::filesystem::path& file) {
    headings_.clear();
    QFile source(PathToQString(file));
    if (!source.open(QIODevice::ReadOnly)) {
        clear();
        return false;
    }
    setSearchPaths({PathToQString(file.parent_path())});
    setMarkdown(QString::fromUtf8(source.readAll()));
    document()->setDocumentMargin(Gap() * 2);
    FormatTables(*document(), Border(palette()));
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (const int level = block.blockFormat().headingLevel(); level > 0) {
            headings_.push_back({block.text(), level, block.blockNumber()});
        }
    }
    return true;
}

int GuideText::HeadingOfLink(const QString& link) const {
    const auto found = std::ranges::find_if(
        headings_, [&link](const GuideHeading& heading) { return LinkOf(heading.text) == link; });
    return found == headings_.end() ? -1 : static_cast<int>(found - headings_.begin());
}

double GuideText::TopOf(const GuideHeading& heading) const {
    const QTextBlock block = document()->findBlockByNumber(heading.block);
    return document()->documentLayout()->blockBoundingRect(block).top();
}

void GuideText::ShowHeading(int number) {
    const GuideHeading& heading = headings_.at(static_cast<std::size_t>(number));
    setTextCursor(QTextCursor(document()->findBlockByNumber(heading.block)));
    verticalScrollBar()->setValue(static_cast<int>(TopOf(heading)));
}

int GuideText::HeadingAtTop() const {
    const double top = verticalScrollBar()->value() + fontMetrics().height();
    const auto behind = std::ranges::find_if(
        headings_, [&](const GuideHeading& heading) { return TopOf(heading) > top; });
    const auto at = behind - headings_.begin() - 1;
    return std::max(static_cast<int>(at), headings_.empty() ? -1 : 0);
}

// Pictures are at most as wide as the lines.
QVariant GuideText::loadResource(int type, const QUrl& name) {
    QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource || resource.isNull()) {
        return resource;
    }
    QImage picture = resource.typeId() == QMetaType::QByteArray
                         ? QImage::fromData(resource.toByteArray())
                         : resource.value<QImage>();
    const int most = fontMetrics().averageCharWidth() * 84;
    return picture.width() <= most ? picture
                                   : picture.scaledToWidth(most, Qt::SmoothTransformation);
}

} // namespace tracksmith::forms

#include <array>
#include <set>

#include "base/data_folders.h"
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextCursor>

#include "app/forms/dialogs.h"
#include "app/forms/form_fixture.h"
#include "app/forms/guide/guide_form.h"
#include "app/forms/guide/guide_sections.h"
#include "app/forms/guide/guide_text.h"
#include "app/forms/guide/texts.h"

namespace tracksmith::forms {
namespace {

std::optional<std::filesystem::path> Guide(Language language) {
    return FindDocument(std::string(guide_texts::kFile.In(language)));
}

GuideForm* OpenGuide() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* guide = qobject_cast<GuideForm*>(window); guide != nullptr) {
            return guide;
        }
    }
    return nullptr;
}

/// What the contents mark as the place.
std::string Place(const QWidget& guide) {
    const auto* item = guide.findChild<QListWidget*>()->currentItem();
    return item == nullptr ? std::string() : item->text().trimmed().toStdString();
}

QPushButton* Button(const QWidget& guide, const char* name) {
    return guide.findChild<QPushButton*>(QLatin1String(name));
}

class GuideTest : public FormTest {
protected:
    /// F1 there opens the guide at that section, in the language that is shown.
    void ExpectSection(QWidget* at, const Text& section) {
        ASSERT_NE(at, nullptr);
        QTest::keyClick(at, Qt::Key_F1);
        GuideForm* guide = OpenGuide();
        ASSERT_NE(guide, nullptr) << at->objectName().toStdString();
        EXPECT_EQ(guide->isVisible(), true);
        EXPECT_EQ(Place(*guide), section.In(language_)) << at->objectName().toStdString();
    }

    /// The dialog that the command opens has a section of its own.
    void ExpectSectionOfDialog(const char* action, const char* dialog) {
        Trigger(action);
        auto* window = Find<QDialog>(dialog);
        ASSERT_NE(window, nullptr);
        const Text& section = GuideSectionOf(window);
        EXPECT_NE(section.english, guide_texts::kSections.front().heading.english) << dialog;
        ExpectSection(window, section);
        delete window;
    }

    Language language_ = Language::English;
};

TEST_F(GuideTest, BothGuidesHaveTheSameStructureAndLinksAndPicturesThatLead) {
    std::array<GuideText, 2> guides;
    for (std::size_t i = 0; i < guides.size(); ++i) {
        const auto file = Guide(i == 0 ? Language::English : Language::German);
        ASSERT_TRUE(file && guides[i].Read(*file));
        std::ifstream source(*file);
        const auto markdown =
            QString::fromStdString(std::string(std::istreambuf_iterator<char>(source), {}));
        int links = 0;
        const QRegularExpression target(QStringLiteral("\\]\\(([^)]+)\\)"));
        for (auto each = target.globalMatch(markdown); each.hasNext(); ++links) {
            const QString to = each.next().captured(1);
            EXPECT_TRUE(to.startsWith(u'#')
                            ? guides[i].HeadingOfLink(to) >= 0
                            : std::filesystem::exists(file->parent_path() / to.toStdString()))
                << to.toStdString();
        }
        EXPECT_GT(links, 12);
        std::set<QString> names;
        for (const GuideHeading& heading : guides[i].Headings()) {
            EXPECT_TRUE(names.insert(heading.text).second) << heading.text.toStdString();
        }
        for (const guide_texts::Section& section : guide_texts::kSections) {
            const Language language = i == 0 ? Language::English : Language::German;
            EXPECT_TRUE(names.contains(InLanguage(section.heading, language))) << section.owner;
        }
    }
    ASSERT_EQ(guides[0].Headings().size(), guides[1].Headings().size());
    for (std::size_t i = 0; i < guides[0].Headings().size(); ++i) {
        EXPECT_EQ(guides[0].Headings()[i].level, guides[1].Headings()[i].level) << i;
    }
}

TEST_F(GuideTest, TheHelpKeyOpensTheSectionOfEachWindow) {
    const auto file = Write("waltz.mid", Waltz());
    for (const char* language : {"MMF_German", "MMF_English"}) {
        Trigger(language);
        language_ =
            language == std::string_view("MMF_German") ? Language::German : Language::English;
        form_->OpenMidiFile(file);
        for (const auto& [action, dialog] : kDialogs) {
            ExpectSectionOfDialog(action, dialog);
        }
        ExpectSectionOfDialog("MMI_PickVoice", "PickerForm");
        ExpectSection(Find<QWidget>("Overview"), GuideSectionOf(Find<QWidget>("Overview")));
        ExpectSection(Find<QWidget>("TB_Volume02"), GuideSectionOf(Find<QWidget>("Strips")));
        ExpectSection(form_.get(), guide_texts::kSections.front().heading);
    }
}

// A box that blocks every window of the program does not block the guide about it.
TEST_F(GuideTest, OpensOverABoxAndCanBeUsedThere) {
    QTimer::singleShot(0, form_.get(), [this] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        ExpectSection(box, guide_texts::kMessages);
        EXPECT_EQ(OpenGuide()->parentWidget(), box);
        box->reject();
    });
    form_->OpenMidiFile(Write("noise.mid", test::Bytes(100)));
    Trigger("MMF_UserGuide");
    EXPECT_EQ(OpenGuide()->parentWidget(), nullptr);
}

TEST_F(GuideTest, GoesBackAndForwardAndFollowsLinks) {
    Trigger("MMF_UserGuide");
    GuideForm* guide = OpenGuide();
    ASSERT_NE(guide, nullptr);
    guide->ShowSection(Text{De{"Mischpult"}, En{"Mixer"}});
    guide->ShowSection(Text{De{"Tasten"}, En{"Keys"}});
    EXPECT_FALSE(Button(*guide, "Btn_GuideForward")->isEnabled());
    Button(*guide, "Btn_GuideBack")->click();
    EXPECT_EQ(Place(*guide), "Mixer");
    EXPECT_FALSE(Button(*guide, "Btn_GuideBack")->isEnabled());
    Button(*guide, "Btn_GuideForward")->click();
    EXPECT_EQ(Place(*guide), "Keys");
    EXPECT_TRUE(QTest::qWaitForWindowActive(guide));
    QTest::keyClick(guide, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(*guide), "Mixer");
    QTest::keyClick(guide, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Place(*guide), "Keys");
    Button(*guide, "Btn_GuideBack")->click();
    auto* text = guide->findChild<GuideText*>();
    emit text->anchorClicked(QUrl(QStringLiteral("#where-files-are")));
    EXPECT_EQ(Place(*guide), "Where files are");
    emit text->anchorClicked(QUrl(QStringLiteral("#nowhere")));
    EXPECT_EQ(Place(*guide), "Where files are");
    guide->findChild<QListWidget*>()->setCurrentRow(0);
    EXPECT_EQ(text->HeadingAtTop(), 0);
    text->verticalScrollBar()->setValue(text->verticalScrollBar()->maximum() / 2);
    EXPECT_EQ(guide->findChild<QListWidget*>()->currentRow(), text->HeadingAtTop());
    EXPECT_GT(text->HeadingAtTop(), 0);
    text->verticalScrollBar()->setValue(0);
    Trigger("MMF_German"); // stays where it is
    EXPECT_EQ(Place(*guide), "Tracksmith-Benutzerhandbuch");
    EXPECT_EQ(guide->windowTitle(), QStringLiteral("Benutzerhandbuch"));
}

TEST_F(GuideTest, SearchGoesRoundInBothDirections) {
    GuideForm guide(Guide, Language::English, nullptr);
    guide.setAttribute(Qt::WA_DeleteOnClose, false);
    guide.show();
    guide.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&guide));
    const auto* text = guide.findChild<GuideText*>();
    auto* field = guide.findChild<QLineEdit*>();
    QTest::keyClick(&guide, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(field, QStringLiteral("tracksmith synth"));
    QTest::keyClick(field, Qt::Key_Return);
    const int first = text->textCursor().position();
    EXPECT_EQ(text->textCursor().selectedText(), QStringLiteral("Tracksmith Synth"));
    QTest::keyClick(field, Qt::Key_Return); // the only one
    EXPECT_EQ(text->textCursor().position(), first);
    field->setText(QStringLiteral("overview"));
    const auto next = [&](Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(field, Qt::Key_Return, modifiers);
        return text->textCursor().position();
    };
    std::vector<int> places{next()};
    for (int place = next(); place != places.front() && places.size() < 100; place = next()) {
        places.push_back(place);
    }
    EXPECT_GT(places.size(), 1U);
    EXPECT_EQ(next(Qt::ShiftModifier), places.back());
    EXPECT_EQ(next(Qt::ShiftModifier), places[places.size() - 2]);
    QTest::keyClick(&guide, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(field->selectedText(), QStringLiteral("overview"));
    const auto* found = guide.findChild<QLabel*>(QStringLiteral("Lbl_GuideFound"));
    EXPECT_EQ(found->text(), QString());
    field->setText(QStringLiteral("no such word"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(found->text(), QStringLiteral("not found"));
    field->clear();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(found->text(), QString());
    QTest::keyClick(&guide, Qt::Key_Escape);
    EXPECT_FALSE(guide.isVisible());
}

TEST_F(GuideTest, SaysThatItIsMissing) {
    GuideForm guide([](Language) { return std::nullopt; }, Language::German, nullptr);
    guide.setAttribute(Qt::WA_DeleteOnClose, false);
    guide.show();
    EXPECT_TRUE(guide.findChild<GuideText*>()->toPlainText().contains(
        QStringLiteral("share/tracksmith/docs")));
    guide.ShowSection(guide_texts::kRanges);
    EXPECT_EQ(guide.findChild<QListWidget*>()->count(), 0);
}

} // namespace
} // namespace tracksmith::forms

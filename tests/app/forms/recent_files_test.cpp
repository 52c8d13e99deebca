#include "app/forms/menu/recent_files.h"

#include <QListWidget>
#include <QMenu>

#include "app/forms/form_fixture.h"

namespace tracksmith::forms {
namespace {

using RecentFilesTest = FormTest;

TEST_F(RecentFilesTest, ListKeepsTheNewestTenWithoutDoubles) {
    RecentFiles recent(*store_);
    for (int i = 0; i < 12; ++i) {
        recent.Add(Path(("Stück " + std::to_string(i) + ".mid").c_str()));
    }
    recent.Add(Path("Stück 5.mid"));
    const auto files = RecentFiles(*store_).List();
    ASSERT_EQ(files.size(), RecentFiles::kMost);
    EXPECT_EQ(files[0], Path("Stück 5.mid"));
    EXPECT_EQ(files[1], Path("Stück 11.mid"));
    EXPECT_EQ(files[9], Path("Stück 2.mid"));
}

TEST_F(RecentFilesTest, MenuOpensAFileGreysMissingOnesAndClearsTheList) {
    form_->OpenMidiFile(Write("gone.mid", Waltz()));
    form_->OpenMidiFile(Write("a&b.mid", Waltz()));
    std::filesystem::remove(Path("gone.mid"));
    form_->ClearMidiMemory();
    auto* menu = Find<QMenu>("Menu_Recent");
    emit menu->aboutToShow();
    ASSERT_GE(menu->actions().size(), 2);
    EXPECT_TRUE(menu->actions()[0]->text().endsWith(QStringLiteral("a&&b.mid")));
    EXPECT_FALSE(menu->actions()[1]->isEnabled());
    menu->actions()[0]->trigger();
    EXPECT_EQ(LabelText("Lbl_FileName"), "a&b.mid");
    Trigger("MMF_ClearRecent");
    EXPECT_TRUE(RecentFiles(*store_).List().empty());
}

TEST_F(RecentFilesTest, EmptyPageOffersTheFiles) {
    // Several files at the start: the first is opened, all are offered.
    form_->OpenMidiFiles({Write("waltz.mid", Waltz()), Write("other.mid", Waltz())});
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
    OpenWindow();
    auto* list = Find<QListWidget>("List_Recent");
    ASSERT_TRUE(list->isVisible());
    ASSERT_EQ(list->count(), 2);
    EXPECT_TRUE(list->item(0)->text().endsWith(QStringLiteral("waltz.mid")));
    std::filesystem::remove(Path("other.mid"));
    OpenWindow();
    list = Find<QListWidget>("List_Recent");
    EXPECT_TRUE(list->item(1)->text().endsWith(QStringLiteral("other.mid – not found")));
    emit list->itemClicked(list->item(1));
    EXPECT_FALSE(form_->Session().HasSong());
    emit list->itemActivated(list->item(0));
    EXPECT_EQ(LabelText("Lbl_FileName"), "waltz.mid");
}

} // namespace
} // namespace tracksmith::forms

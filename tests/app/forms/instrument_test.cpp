#include "form_fixture.h"
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

#include "app/prepare_song.h"
#include "song/check_song.h"

namespace tracksmith::forms {
namespace {

/// Windows of the instruments; voice lists of the user are in the test's folder.
class InstrumentTest : public FormTest {
protected:
    void SetUp() override {
        qputenv(test::kDataFolderVariable, folder_.path().toUtf8());
        FormTest::SetUp();
    }

    void Choose(const char* words) {
        Trigger("MMI_ChooseInstrument");
        auto* search = Find<QLineEdit>("E_SearchInstrument");
        QTest::keyClicks(search, QLatin1String(words));
        QTest::keyClick(search, Qt::Key_Return);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::string Instrument() { return store_->ReadStrFromUserRegistry("MidiInstrument00", "none"); }
};

TEST_F(InstrumentTest, IsFoundByTypingAndRemembered) {
    EXPECT_EQ(Find<QPushButton>("Btn_Instrument")->accessibleName().toStdString(),
              "Instrument: please choose…");
    Choose("yam tyros 5");
    EXPECT_EQ(Instrument(), "Yamaha Tyros 5");
    EXPECT_EQ(LabelText("Lbl_StatusInstrument"), "Yamaha Tyros 5");
    Trigger("MMI_ChooseInstrument");
    auto* search = Find<QLineEdit>("E_SearchInstrument");
    auto* tree = Find<QTreeWidget>("Tree_Instruments");
    EXPECT_EQ(tree->currentItem()->text(0).toStdString(), "Yamaha Tyros 5");
    const int rowHeight = tree->visualItemRect(tree->currentItem()).height();
    EXPECT_GT(tree->viewport()->height() / rowHeight, 20); // of 109
    QTest::keyClick(search, Qt::Key_Up);
    EXPECT_EQ(tree->currentItem()->text(0).toStdString(), "Yamaha Tyros 4");
    QTest::keyClick(search, Qt::Key_Down);
    EXPECT_EQ(tree->currentItem()->text(0).toStdString(), "Yamaha Tyros 5");
    const auto* choose = Find<QPushButton>("Btn_OK");
    EXPECT_TRUE(choose->isEnabled());
    search->setText(QStringLiteral("no such keyboard"));
    EXPECT_FALSE(choose->isEnabled());
    EXPECT_TRUE(tree->topLevelItem(0)->isHidden());
    search->clear();
    EXPECT_FALSE(tree->topLevelItem(0)->isHidden() || tree->topLevelItem(0)->child(0)->isHidden());
    QTest::keyClick(search, Qt::Key_Down); // makers are stepped over
    EXPECT_EQ(tree->currentItem(), tree->topLevelItem(0)->child(0));
    EXPECT_TRUE(choose->isEnabled());
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(Instrument(), "Yamaha Tyros 5");
    OpenWindow();
    EXPECT_EQ(Find<QPushButton>("Btn_Instrument")->text().toStdString(), "Yamaha Tyros 5");
}

TEST_F(InstrumentTest, AnUnknownStoredNameIsToldAndTouchesNoSong) {
    store_->WriteStrToUserRegistry("MidiInstrument00", "Keyboard of 1999");
    OpenWindow();
    EXPECT_NE(
        Find<QLabel>("Lbl_Notice")->accessibleName().indexOf(QStringLiteral("Keyboard of 1999")),
        -1);
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    EXPECT_FALSE(form_->Session().Work().preparation.prepared);
}

TEST_F(InstrumentTest, LoadingPreparesTheSongAndTellsSo) {
    Choose("Yamaha Genos2");
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    EXPECT_NE(Find<QLabel>("Lbl_Notice")
                  ->accessibleName()
                  .indexOf(QStringLiteral("Prepared for Yamaha Genos2: +1 XG System On")),
              -1);
    EXPECT_FALSE(form_->Session().Modified());
    Find<QPushButton>("Btn_Details")->click();
    EXPECT_EQ(RowText("Table_Messages", 0),
              "inserted|XG System On|1|001.01.002|F0 43 10 4C 00 00 7E 00 F7");
}

TEST_F(InstrumentTest, ChangingItAsksAndPreparesTheOpenSong) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    EXPECT_FALSE(form_->Session().Work().preparation.prepared); // none chosen yet
    {
        BoxAnswer no("Btn_Close");
        Choose("gm2 soundset");
        EXPECT_EQ(no.text, "Shall the open song be prepared for \"GM2 Soundset\"?");
    }
    EXPECT_FALSE(form_->Session().Modified());
    EXPECT_EQ(LabelText("Lbl_Notice"), "The song is not prepared for GM2 Soundset");
    auto* prepare = Find<QPushButton>("Btn_PrepareNow");
    prepare->click();
    EXPECT_TRUE(form_->Session().Work().preparation.prepared);
    EXPECT_FALSE(prepare->isVisible());
    BoxAnswer yes("Btn_WayOn");
    Choose("roland sc-88pro");
    EXPECT_TRUE(form_->Session().Modified());
    EXPECT_EQ(form_->Session().Work().preparation.inserted, 1);
    EXPECT_EQ(song::CheckSong(form_->Session().Work().song), "");
}

TEST_F(InstrumentTest, PreparingIsTakenBackFromTheNoticeAndByTheKey) {
    store_->WriteStrToUserRegistry("MidiInstrument00", "Yamaha Genos2");
    OpenWindow();
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    const auto messages = [&] { return form_->Session().Work().preparation.inserted; };
    EXPECT_EQ(messages(), 1);
    auto* menu = Find<QAction>("MME_TakeBack");
    EXPECT_EQ(menu->text().remove(u'&').toStdString(), "Take Back Preparing");
    Find<QPushButton>("Btn_TakeBack")->click(); // what loading did
    EXPECT_EQ(messages(), 0);
    EXPECT_FALSE(form_->Session().Modified());
    EXPECT_EQ(menu->text().remove(u'&').toStdString(), "Redo Preparing");
    Trigger("MMI_PrepareSong"); // what the user did
    EXPECT_EQ(messages(), 1);
    EXPECT_TRUE(form_->Session().Modified());
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    QTest::keyClick(form_->focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(messages(), 0);
    EXPECT_FALSE(form_->Session().Modified());
    Trigger("MME_TakeBack");
    EXPECT_EQ(messages(), 1);
}

TEST_F(InstrumentTest, ALeadInMeasureIsOfferedWhereNotesBeginTooEarly) {
    store_->WriteStrToUserRegistry("MidiInstrument00", "Yamaha Genos2");
    OpenWindow();
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    const std::int32_t length = form_->Session().Song().songLength;
    auto* menu = Find<QAction>("MMI_InsertLeadIn");
    auto* button = Find<QPushButton>("Btn_LeadIn");
    EXPECT_TRUE(button->isVisible());
    EXPECT_TRUE(menu->isEnabled());
    form_->Session().MarkModified(); // by hand
    {
        BoxAnswer no("Btn_No");
        button->click();
        EXPECT_EQ(form_->Session().Song().songLength, length);
    }
    BoxAnswer yes("Btn_Yes");
    button->click();
    EXPECT_EQ(form_->Session().Song().songLength, length + 3 * 480);
    EXPECT_FALSE(app::HasEarlyNotes(form_->Session().Work().preparation));
    EXPECT_FALSE(button->isVisible());
    EXPECT_FALSE(menu->isEnabled());
    EXPECT_EQ(song::CheckSong(form_->Session().Song()), "");
    Trigger("MME_TakeBack");
    EXPECT_EQ(form_->Session().Song().songLength, length);
}

TEST_F(InstrumentTest, PreparingGoesOnPlayingWhereItWas) {
    Choose("roland sc-88pro");
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    form_->Session().Controls().MoveToTick(1440);
    Trigger("MMP_PlayStop");
    BoxAnswer yes("Btn_WayOn");
    Choose("yamaha genos2");
    EXPECT_EQ(form_->Session().Work().preparation.inserted, 1);
    EXPECT_TRUE(form_->Session().Controls().Playing());
    EXPECT_GE(form_->Session().Controls().Tick(), 1440);
    Trigger("MMP_PlayStop");
}

TEST_F(InstrumentTest, SettingsAreOpenOnlyWhereTheInstrumentHasThem) {
    Choose("yamaha genos2");
    Trigger("MMS_Instruments");
    auto* list = Find<QTreeWidget>("CB_Instrument");
    const auto take = [&](std::string_view name) {
        const auto items = list->findItems(ToQString(name), Qt::MatchExactly | Qt::MatchRecursive);
        list->setCurrentItem(items.at(0));
    };
    const auto check = [this](const std::string& control, instruments::Capability capability,
                              bool available) {
        const auto* widget = Find<QWidget>(control.c_str());
        EXPECT_EQ(widget->isEnabled(), available) << control << ' ' << Instrument();
        const QString why = InLanguage(instruments::WhyUnavailable(capability), Language::English);
        EXPECT_EQ(widget->toolTip() == why, !available) << control << ' ' << Instrument();
    };
    for (const instruments::Instrument& instrument : instruments::Catalogue()) {
        take(instrument.name);
        EXPECT_EQ(Instrument(), instrument.name);
        const auto has = [&](instruments::Capability capability) {
            return instruments::HasCapability(instrument.name, capability);
        };
        for (const instruments::SysexSwitch& choice : instruments::SysexSwitches()) {
            if (choice.capability) {
                check(std::string("CB_") + choice.setting, *choice.capability,
                      has(*choice.capability));
            }
        }
        using instruments::Capability;
        check("CB_LimexTE200", Capability::LimexTe200, has(Capability::LimexTe200));
        check("CB_RolandSCDefaultMap", Capability::RolandScMap, has(Capability::RolandScMap));
        EXPECT_EQ(Find<QPushButton>("Btn_AudioRouting")->isEnabled(),
                  !instruments::AudioOutputs(instrument.name).empty())
            << instrument.name;
        EXPECT_EQ(static_cast<std::size_t>(Find<QComboBox>("CB_RolandSCDefaultMap")->count()),
                  instruments::RolandScMaps(instrument.name).size());
    }
}

TEST_F(InstrumentTest, SettingsAreKeptForEachInstrument) {
    Choose("roland sc-88pro");
    Trigger("MMS_Instruments");
    auto* list = Find<QTreeWidget>("CB_Instrument");
    const auto take = [&](const char* name) {
        list->setCurrentItem(
            list->findItems(QLatin1String(name), Qt::MatchExactly | Qt::MatchRecursive).at(0));
    };
    auto* track = Find<QSpinBox>("E_SysexTrack");
    EXPECT_EQ(track->value(), instruments::InstrumentSettings(*store_).ReadSysexTrack() + 1);
    track->setValue(3);
    EXPECT_EQ(instruments::InstrumentSettings(*store_).ReadSysexTrack(), 2);
    auto* maps = Find<QComboBox>("CB_RolandSCDefaultMap");
    EXPECT_EQ(maps->currentText(), QStringLiteral("SC-88Pro"));
    maps->setCurrentIndex(0);
    emit maps->activated(0);
    take("Korg Pa800");
    Find<QCheckBox>("CB_KorgPartEQ")->click();
    take("Roland SC-88Pro");
    EXPECT_EQ(maps->currentText(), QStringLiteral("SC-55"));
    EXPECT_TRUE(store_->ReadBoolFromUserRegistrySubdir("Korg Pa800", "KorgPartEQ", false));
    EXPECT_EQ(track->value(), 3); // for all
    take("Yamaha Motif-Rack XS");
    Find<QPushButton>("Btn_AudioRouting")->click();
    auto* part = Find<QComboBox>("CB_Part15");
    ASSERT_GT(part->count(), 1);
    part->setCurrentIndex(1);
    emit part->activated(1);
    EXPECT_EQ(instruments::InstrumentSettings(*store_).ReadAudioOutput("Yamaha Motif-Rack XS", 15),
              instruments::AudioOutputs("Yamaha Motif-Rack XS")[1].value);
}

TEST_F(InstrumentTest, AnotherOutputHasAnInstrumentOfItsOwn) {
    Choose("yamaha genos2");
    Trigger("MMS_Instruments");
    auto* output = Find<QComboBox>("CB_InstrumentOutput");
    ASSERT_EQ(output->count(), 3);
    output->setCurrentIndex(2);
    emit output->activated(2);
    auto* list = Find<QTreeWidget>("CB_Instrument");
    list->setCurrentItem(
        list->findItems(QStringLiteral("Korg Pa700"), Qt::MatchExactly | Qt::MatchRecursive).at(0));
    EXPECT_EQ(Instrument(), "Yamaha Genos2");
    const std::string port = output->itemText(2).toStdString();
    EXPECT_EQ(store_->ReadStrFromUserRegistrySubdir(port, "MidiInstrument", ""), "Korg Pa700");
}

TEST_F(InstrumentTest, ChannelsOnAnotherOutputAreNamedByItsInstrument) {
    Choose("yamaha genos");
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    const auto voice = [this] { return Find<QWidget>("Btn_Voice02")->accessibleName(); };
    EXPECT_EQ(voice().indexOf(QStringLiteral("Acoustic Guitar")), -1);
    auto* output = Find<QComboBox>("CB_RouteOutput02");
    output->setCurrentIndex(2);
    emit output->activated(2);
    EXPECT_NE(voice().indexOf(QStringLiteral("Acoustic Guitar (nylon) (similar)")), -1); // GM
    EXPECT_NE(Find<QWidget>("Btn_Voice02")->toolTip().indexOf(QStringLiteral("8·3·25")), -1);
    Trigger("MMI_ChooseInstrument");
    auto* choice = Find<QComboBox>("CB_ChooserOutput");
    ASSERT_EQ(choice->count(), 2);
    choice->setCurrentIndex(1);
    emit choice->activated(1);
    QTest::keyClicks(Find<QLineEdit>("E_SearchInstrument"), QStringLiteral("integra"));
    Find<QPushButton>("Btn_OK")->click();
    EXPECT_EQ(Instrument(), "Yamaha Genos");
    EXPECT_EQ(form_->Session().Work().outputs.InstrumentOfChannel(2), 71);

    Find<QAbstractButton>("Btn_Voice02")->click();
    const QPointer<QDialog> picker = Find<QDialog>("PickerForm");
    EXPECT_NE(LabelText("L_PickerSubtitle").find("Roland Integra-7"), std::string::npos);
    picker->reject();
    EXPECT_TRUE(QTest::qWaitFor([&] { return picker.isNull(); }));
    Trigger("MMI_Voices");
    EXPECT_EQ(Find<QDialog>("PatchesForm")->windowTitle(),
              QStringLiteral("Voices: Roland Integra-7"));
    auto* family = Find<QComboBox>("CB_VoiceFamily");
    const int all = Find<QTableView>("Table_Voices")->model()->rowCount();
    family->setCurrentIndex(family->findData(QStringLiteral("SN-A")));
    EXPECT_EQ(Find<QTableView>("Table_Voices")->model()->rowCount(), 256);
    EXPECT_GT(all, 5000);
    EXPECT_NE(LabelText("L_ChannelPlays").find("Channel 3 plays: "), std::string::npos);
    EXPECT_TRUE(Find<QLabel>("L_NoVoice")->isHidden());
    auto* search = Find<QLineEdit>("E_SelectSoundName");
    search->setText(QStringLiteral("drum kits"));
    EXPECT_NE(LabelText("L_NoVoice").find("all families"), std::string::npos);
    search->setText(QStringLiteral("no such voice"));
    EXPECT_NE(LabelText("L_NoVoice").find("fewer words"), std::string::npos);
    search->clear();
    EXPECT_TRUE(Find<QLabel>("L_NoVoice")->isHidden());
    auto* instrument = Find<QComboBox>("CB_PatchesInstrument");
    instrument->setCurrentIndex(instrument->findText(QStringLiteral("Roland SC-88")));
    emit instrument->activated(instrument->currentIndex());
    EXPECT_EQ(Find<QTableView>("Table_Voices")->model()->rowCount(), 860);
}

TEST_F(InstrumentTest, OwnVoiceListsNameTheChannels) {
    Choose("korg pa700");
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    chooser_->answer =
        Write("list.ins", test::BytesOf(".Patch Names\n[P]\n24=Our Guitar\n"
                                        ".Instrument Definitions\n[Korg]\nPatch[1027]=P\n"));
    Trigger("MMI_Voices");
    Find<QPushButton>("Btn_ImportVoices")->click();
    EXPECT_NE(LabelText("L_VoicesMessage").find("1 voices taken"), std::string::npos);
    EXPECT_EQ(RowText("Table_Voices", 0), "Our Guitar|P|Voices|8|3|25");
    EXPECT_NE(Find<QWidget>("Btn_Voice02")->accessibleName().indexOf(QStringLiteral("Our Guitar")),
              -1);
    {
        const BoxAnswer no("Btn_No"); // the table that is there is the user's own
        Find<QPushButton>("Btn_ImportVoices")->click();
        EXPECT_NE(no.text.find("Korg Pa700"), std::string::npos);
    }
    chooser_->answer = Path("list.tsv");
    Find<QPushButton>("Btn_ExportVoices")->click();
    EXPECT_GT(std::filesystem::file_size(Path("list.tsv")), 40U);
    chooser_->answer = Write("bad.ins", test::BytesOf("nonsense\n"));
    Find<QPushButton>("Btn_ImportVoices")->click();
    EXPECT_NE(LabelText("L_VoicesMessage").find("bad.ins"), std::string::npos);
    EXPECT_EQ(RowText("Table_Voices", 0), "Our Guitar|P|Voices|8|3|25");
}

} // namespace
} // namespace tracksmith::forms

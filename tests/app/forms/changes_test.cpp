#include <fstream>
#include <iterator>

#include "base/recording_message_host.h"
#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include "app/forms/changes/change_log.h"
#include "app/forms/form_fixture.h"
#include "app/save_song.h"
#include "song/event_chain.h"
#include "song/shared_byte.h"

namespace tracksmith::forms {
namespace {

/// The window about what has changed since the file was loaded.
class ChangesFormTest : public FormTest {
protected:
    // The notes of channel 3 a semitone higher, and faster by one.
    void OpenChanged() {
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        loaded_ = Saved();
        Trigger("MMP_TransposeUp");
        Trigger("MMP_TempoUp");
        Trigger("MMF_WhatChanged");
        tree_ = Find<QTreeView>("Tree_Changes");
        ASSERT_TRUE(QTest::qWaitFor([&] { return tree_->model()->rowCount() > 0; }));
    }
    std::string Rows() const {
        QStringList rows;
        const QAbstractItemModel& model = *tree_->model();
        for (int group = 0; group < model.rowCount(); ++group) {
            const QModelIndex channel = model.index(group, 0);
            rows << channel.data().toString();
            for (int row = 0; row < model.rowCount(channel); ++row) {
                QStringList cells;
                for (int column = 0; column < model.columnCount(); ++column) {
                    cells << model.index(row, column, channel).data().toString();
                }
                rows << cells.join(u'|');
            }
        }
        return rows.join(u'\n').toStdString();
    }
    void Press(const char* button) const { Find<QPushButton>(button)->click(); }
    std::string Content(const char* name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    test::Bytes Saved() const {
        RecordingMessageHost host;
        const auto bytes = app::EncodeSong(form_->Session(), app::SaveFormat::AsSong, host);
        return {bytes.begin(), bytes.end()};
    }
    std::int32_t Tick() const { return form_->Session().Controls().Tick(); }

    test::Bytes loaded_;
    QTreeView* tree_ = nullptr;
};

const std::string kTempo =
    "Whole song  –  2 changes\n"
    "Tempo|001.01.000|120 BPM, 2 times|121 BPM and others|Practice Tempo";
const std::string kNotes = "Channel 3  –  3 changes\nNote|001.01.000|3 notes|+1 semitones|Mixer";

TEST_F(ChangesFormTest, ShowsFiltersSeeksAndSaves) {
    OpenChanged();
    const std::string all = kTempo + "\n" + kNotes;
    EXPECT_EQ(Rows(), all);
    EXPECT_EQ(LabelText("Lbl_ChangesSummary"),
              "5 changes. The file itself stays as it is until you save.");
    EXPECT_EQ(Find<QPushButton>("Btn_Notes")->text().toStdString(), "Notes  3");
    Press("Btn_TempoKind");
    EXPECT_EQ(Rows(), kNotes);
    Press("Btn_TempoKind");
    auto* channels = Find<QComboBox>("Box_ChangesChannel");
    ASSERT_EQ(channels->count(), 3);
    channels->setCurrentIndex(1);
    EXPECT_EQ(Rows(), kTempo);
    form_->Session().Controls().MoveToTick(960);
    QTest::keyClick(tree_, Qt::Key_Return);
    EXPECT_EQ(Tick(), 0);
    channels->setCurrentIndex(0);
    chooser_->answers = {Path("changes.txt"), Path("changes.json")};
    Press("Btn_SaveText");
    EXPECT_EQ(Content("changes.txt"),
              "Whole song\n  001.01.000  Tempo: 120 BPM, 2 times -> 121 BPM and others "
              "[Practice Tempo]\n"
              "Channel 3\n  001.01.000  Note: 3 notes -> +1 semitones [Mixer]\n");
    Press("Btn_SaveJson");
    EXPECT_EQ(Content("changes.json").rfind(R"({"schema":1,"before":)", 0), 0U);
    Trigger("MMF_WhatChanged"); // only one window
    EXPECT_EQ(form_->findChildren<QDialog*>(QStringLiteral("Dlg_WhatChanged")).size(), 1);
    // It follows what is edited.
    Trigger("MMP_TransposeReset");
    Trigger("MMP_TempoReset");
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree_->model()->rowCount() == 0; }));
    EXPECT_EQ(LabelText("Lbl_ChangesSummary"), "Nothing changed: the song is as the loaded file.");
    EXPECT_EQ(Rows(), "");
    // Another song is another comparison.
    form_->Session().MarkSaved(Path("waltz.mid"), session::SaveFormat::AsSong);
    form_->OpenMidiFile(Write("other.mid", Waltz()));
    EXPECT_EQ(LabelText("Lbl_ChangesSong"), "other.mid: the loaded file against the song now");
}

TEST_F(ChangesFormTest, BeforeIsHeardAndNothingIsChanged) {
    OpenChanged();
    const test::Bytes saved = Saved();
    auto& controls = form_->Session().Controls();
    controls.MoveToTick(960);
    loop_->SetRecording(0, true);
    Press("Btn_Before");
    EXPECT_TRUE(form_->Session().HearsOther());
    EXPECT_EQ(Tick(), 960);
    QTest::keyClick(tree_, Qt::Key_Space);
    EXPECT_TRUE(controls.Playing());
    const auto heard = [&](std::uint8_t key) {
        const auto sent = loop_->TakeSent(0);
        return std::ranges::any_of(sent, [key](const midi::loop::LoopMessage& message) {
            return message.bytes.size() == 3 && message.bytes[0] == 0x92 && message.bytes[1] == key;
        });
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return heard(62); })); // as the file has it
    Trigger("MMP_TransposeUp");
    EXPECT_NE(LabelText("Lbl_Notice").find("switch back"), std::string::npos);
    for (const char* box : {"Transpose02", "TransposeSong"}) {
        Find<QToolButton>("Btn_CloseNotice")->click();
        auto* slider = Find<QAbstractSlider>(box);
        const int before = slider->value();
        slider->setValue(7);
        EXPECT_EQ(slider->value(), before) << box;
        EXPECT_NE(LabelText("Lbl_Notice").find("switch back"), std::string::npos) << box;
    }
    EXPECT_EQ(Saved(), saved);
    QTest::keyClick(form_.get(), Qt::Key_B, Qt::ControlModifier); // in the main window, too
    EXPECT_FALSE(form_->Session().HearsOther());
    EXPECT_TRUE(Find<QPushButton>("Btn_After")->isChecked());
    EXPECT_TRUE(controls.Playing());
    Find<QDialog>("Dlg_WhatChanged")->activateWindow();
    QTest::keyClick(tree_, Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(form_->Session().HearsOther());
    Find<QDialog>("Dlg_WhatChanged")->close(); // in the middle
    EXPECT_FALSE(form_->Session().HearsOther());
    controls.Stop();
    EXPECT_EQ(Saved(), saved);
    Trigger("MMP_TransposeUp");
    EXPECT_NE(Saved(), saved);
}

TEST_F(ChangesFormTest, TheRowStaysChosenWhileTheSongIsEdited) {
    OpenChanged();
    const auto chosen = [this] {
        EXPECT_EQ(tree_->selectionModel()->selectedRows().size(), 1);
        return tree_->currentIndex().data().toString().toStdString();
    };
    const auto choose = [this](int group) {
        tree_->setCurrentIndex(tree_->model()->index(0, 0, tree_->model()->index(group, 0)));
    };
    EXPECT_EQ(chosen(), "Tempo");
    choose(1);
    Trigger("MMP_TransposeUp");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Rows().find("+2 semitones") != std::string::npos; }));
    EXPECT_EQ(chosen(), "Note");
    Press("Btn_Notes"); // where it is gone the last one is chosen
    EXPECT_EQ(chosen(), "Tempo");
    Press("Btn_Notes");
    Press("Btn_TempoKind");
    EXPECT_EQ(chosen(), "Note");
    Press("Btn_Notes");
    EXPECT_EQ(tree_->model()->rowCount(), 0);
    EXPECT_FALSE(Find<QPushButton>("Btn_ChangeGoThere")->isEnabled());
}

TEST_F(ChangesFormTest, TheMeasuresOfAChangeLoopUntilTheWindowGoes) {
    form_->OpenMidiFile(Write("waltz.mid", Waltz()));
    auto& controls = form_->Session().Controls();
    controls.SetLoop(0, 2880);
    OpenChanged();
    controls.SetLoop(1440, 2880);
    const auto loop = [&] { return std::pair(controls.Loop()->startTick, controls.Loop()->on); };
    EXPECT_EQ(controls.Loop()->endTick, 2880);
    auto* here = Find<QCheckBox>("Chk_LoopHere");
    here->click();
    EXPECT_EQ(loop(), std::pair(0, true));
    EXPECT_EQ(controls.Loop()->endTick, 2880);
    here->click();
    EXPECT_EQ(loop(), std::pair(1440, true));
    controls.SetLooping(false);
    here->click();
    Find<QDialog>("Dlg_WhatChanged")->close();
    EXPECT_EQ(loop(), std::pair(1440, false));
}

TEST_F(ChangesFormTest, TheLoopFollowsTheChosenChange) {
    form_->OpenMidiFile(Write("long.mid", test::MidiFileBuilder()
                                              .Track(test::TrackBuilder()
                                                         .Short(0, 0xB2, 7, 90)
                                                         .Note(0, 2, 60, 90)
                                                         .NoteOff(3'840, 2, 60)
                                                         .Short(0, 0xB2, 7, 80)
                                                         .Note(0, 2, 62, 90)
                                                         .NoteOff(6'000, 2, 62)
                                                         .End())
                                              .Build()));
    Trigger("MMP_TransposeUp");
    auto& controls = form_->Session().Controls();
    controls.MoveToTick(3'900);
    Find<QAbstractSlider>("TB_Volume02")->setValue(33);
    Trigger("MMF_WhatChanged");
    tree_ = Find<QTreeView>("Tree_Changes");
    const auto* model = tree_->model();
    ASSERT_TRUE(QTest::qWaitFor([&] { return model->rowCount(model->index(0, 0)) == 2; }));
    Find<QCheckBox>("Chk_LoopHere")->click();
    const auto choose = [&](int row) {
        tree_->setCurrentIndex(model->index(row, 0, model->index(0, 0)));
        return std::pair(tree_->currentIndex().data().toString().toStdString(),
                         std::pair(controls.Loop()->startTick, controls.Loop()->endTick));
    };
    for (int row : {0, 1, 0}) {
        const auto [kind, loop] = choose(row);
        EXPECT_EQ(loop, kind == "Note" ? std::pair(0, 3'840) : std::pair(3'840, 7'680)) << kind;
    }
}

TEST_F(ChangesFormTest, AMeasureOfTheOverviewLeadsToItsChange) {
    OpenChanged();
    tree_->setCurrentIndex(tree_->model()->index(0, 0, tree_->model()->index(1, 0)));
    auto* overview = Find<QWidget>("ChangesOverview");
    QTest::keyClick(overview, Qt::Key_Right);
    EXPECT_EQ(Tick(), 1440);
    EXPECT_EQ(tree_->currentIndex().data().toString(), QStringLiteral("Tempo"));
    Press("Btn_TempoKind");
    EXPECT_EQ(tree_->currentIndex().data().toString(), QStringLiteral("Note"));
    QTest::keyClick(overview, Qt::Key_Right); // where nothing has changed
    EXPECT_EQ(Tick(), 2880);
    EXPECT_EQ(tree_->currentIndex().data().toString(), QStringLiteral("Note"));
    EXPECT_EQ(LabelText("Lbl_ChangesPlace"), form_->SongPositionToMTC(2880));
    Press("Btn_ChangesPlay");
    EXPECT_TRUE(form_->Session().Controls().Playing());
    EXPECT_EQ(Find<QPushButton>("Btn_ChangesPlay")->text().toStdString(), "Sto&p");
    Press("Btn_ChangesPlay");
    EXPECT_FALSE(form_->Session().Controls().Playing());
}

// What is heard as before ends with saving, which writes the song as it is.
TEST_F(ChangesFormTest, SavingAndAnotherSongEndWhatIsHeard) {
    OpenChanged();
    const test::Bytes saved = Saved();
    Press("Btn_Before");
    chooser_->answer = Path("saved.mid");
    Trigger("MMF_SaveMidifileAs");
    EXPECT_FALSE(form_->Session().HearsOther());
    EXPECT_FALSE(form_->Session().Modified());
    const std::string file = Content("saved.mid");
    EXPECT_EQ(test::Bytes(file.begin(), file.end()), saved);
    Press("Btn_Before");
    form_->OpenMidiFile(Path("waltz.mid"));
    EXPECT_FALSE(form_->Session().HearsOther());
    EXPECT_EQ(Saved(), loaded_);
}

/// What is done to the song by one tool after the other, and by whom it is said to be done.
class ChangeLogTest : public ChangesFormTest {
protected:
    void SetUp() override {
        ChangesFormTest::SetUp();
        form_->OpenMidiFile(Write("waltz.mid", Waltz()));
        log_ = std::make_unique<ChangeLog>(form_->Session());
    }
    void TearDown() override {
        log_.reset();
        ChangesFormTest::TearDown();
    }
    void Change(const session::ChangeKind& kind, const std::function<void(song::Song&)>& edit) {
        RecordingMessageHost host;
        form_->Session().Change(kind, host, [&](session::Workspace& work) {
            edit(work.song);
            return true;
        });
    }
    static diff::Difference Row(std::uint8_t channel, diff::Kind kind, std::uint16_t control = 0) {
        diff::Difference row;
        row.channel = channel;
        row.kind = kind;
        row.control = control;
        return row;
    }
    std::string Controller(std::uint8_t channel, std::uint16_t control) {
        return DoneBy(Row(channel, diff::Kind::Controller, control));
    }
    std::string Notes() { return DoneBy(Row(2, diff::Kind::Note)); }
    std::string DoneBy(const diff::Difference& row) { return log_->DoneBy(row, Language::English); }

    std::unique_ptr<ChangeLog> log_;
};

TEST_F(ChangeLogTest, NamesTheToolsThatTouchedTheControl) {
    song::EventLink volume;
    Change(session::kPrepareSong, [&](song::Song& song) {
        volume = song::NewShortEvent(song.pool, 0, 0xB2, 7, 90);
        song::InsertByTick(song.tracks.front(), volume);
    });
    EXPECT_EQ(Controller(2, 7), "Preparing");
    EXPECT_EQ(Controller(3, 7), "Loading");
    EXPECT_EQ(Controller(2, 10), "Loading");
    EXPECT_EQ(Notes(), "Loading");
    song::WriteShared(volume->data2, 70);
    form_->Session().MarkModified();
    EXPECT_EQ(Controller(2, 7), "Preparing, Mixer");
    EXPECT_EQ(log_->DoneBy(Row(2, diff::Kind::Controller, 7), Language::German),
              "Vorbereiten, Mixer");
    // Back as it was after preparing: nobody's work but that.
    song::WriteShared(volume->data2, 90);
    form_->Session().MarkModified();
    EXPECT_EQ(Controller(2, 7), "Preparing");
    form_->Session().MarkSaved(Path("waltz.mid"), session::SaveFormat::AsSong);
    form_->OpenMidiFile(Write("other.mid", Waltz()));
    EXPECT_EQ(Controller(2, 7), "Loading");
}

TEST_F(ChangeLogTest, WhatMovesEverythingIsNamedWhereNobodyElseWasAtWork) {
    static constexpr session::ChangeKind kCut{.name = Text{De{"Schneiden"}, En{"Cutting"}},
                                              .takeBack = true};
    diff::Difference stretch;
    stretch.change = diff::Change::Cut;
    Change(session::kPrepareSong, [](song::Song& song) {
        song::InsertByTick(song.tracks.front(), song::NewShortEvent(song.pool, 480, 0xB2, 7, 90));
    });
    Change(kCut, [](song::Song& song) {
        for (song::Track& track : song.tracks) {
            for (song::EventLink event = track.first; event; event = event->next) {
                event->tick /= 2;
            }
        }
        song.songLength /= 2;
    });
    EXPECT_EQ(DoneBy(stretch), "Cutting");
    EXPECT_EQ(Controller(2, 7), "Preparing");
    EXPECT_EQ(Notes(), "Cutting");
    Trigger("MME_TakeBack");
    EXPECT_EQ(DoneBy(stretch), "Loading");
    EXPECT_EQ(Notes(), "Loading");
    EXPECT_EQ(Controller(2, 7), "Preparing");
    Trigger("MME_TakeBack"); // and again
    EXPECT_EQ(DoneBy(stretch), "Cutting");
}

} // namespace
} // namespace tracksmith::forms

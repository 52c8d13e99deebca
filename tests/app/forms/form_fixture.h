#pragma once

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

#include "base/forms/qt_text.h"
#include "support/data_folder.h"
#include "support/midi_file_builder.h"
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include "app/forms/loading/song_loader.h"
#include "app/forms/main_form.h"
#include "app/settings/settings_store.h"
#include "midi/backends/loop/backend.h"
#include "midi/portable_driver.h"
#include "midi/portable_input_driver.h"

namespace tracksmith::forms {

/// Answers the file dialogs with one file and keeps what was asked.
class ScriptedChooser : public FileChooser {
public:
    std::optional<std::filesystem::path> ChooseOpen(QWidget*, Language, FileKind,
                                                    const std::filesystem::path& folder) override {
        asked = folder;
        return answer;
    }
    std::optional<std::filesystem::path> ChooseSave(
        QWidget*, Language, FileKind, const std::filesystem::path& proposal) override {
        asked = proposal;
        if (!answers.empty()) {
            answer = answers.front();
            answers.erase(answers.begin());
        }
        return answer;
    }

    std::optional<std::filesystem::path> ChooseFolder(
        QWidget*, const QString&, const std::filesystem::path& folder) override {
        asked = folder;
        return answer;
    }

    std::optional<std::filesystem::path> answer;
    /// Answers for saving that come first, each once.
    std::vector<std::filesystem::path> answers;
    std::filesystem::path asked;
};

/// Presses a button of the next message box as soon as it is shown, and keeps the box's text.
class BoxAnswer {
public:
    explicit BoxAnswer(const char* buttonName) {
        QObject::connect(&timer_, &QTimer::timeout, [this, buttonName] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box != nullptr) {
                text = box->text().toStdString();
                EXPECT_EQ(box->textFormat(), Qt::PlainText);
                auto* button = box->findChild<QPushButton*>(QLatin1String(buttonName));
                EXPECT_NE(button, nullptr) << buttonName << " is not in: " << text;
                button != nullptr ? button->click() : box->reject();
            }
        });
        timer_.start(0);
    }

    /// Empty while no box was shown.
    std::string text;

private:
    QTimer timer_;
};

/// Fails the test instead of waiting for ever when a message box is shown that nobody answers.
class UnansweredBoxes {
public:
    UnansweredBoxes() {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box != nullptr && box == last_) {
                ADD_FAILURE() << "nobody answers: " << box->text().toStdString();
                box->reject();
            }
            last_ = box;
        });
        timer_.start(1'000);
    }

private:
    QTimer timer_;
    const QMessageBox* last_ = nullptr;
};

/// A main window with settings and files of its own.
class FormTest : public testing::Test {
protected:
    void SetUp() override {
        qputenv(test::kDataFolderVariable, folder_.path().toUtf8());
        store_ = std::make_unique<settings::SettingsStore>(
            test::SettingsPlace(PathFromQString(folder_.path())));
        store_->WriteStrToUserRegistry("Language", "en");
        OpenWindow();
    }

    void TearDown() override {
        form_.reset();
        if (store_) {
            store_->DeleteAllRegistry();
        }
    }

    /// Shows a window anew, as the program's next start would.
    void OpenWindow() {
        form_.reset();
        form_ = std::make_unique<TMainForm>(*store_, Devices());
        auto chooser = std::make_unique<ScriptedChooser>();
        chooser_ = chooser.get();
        form_->SetFileChooser(std::move(chooser));
        // Songs are there when opening them returns, however busy the machine is.
        form_->Loader().SetTimes({.quick = std::chrono::minutes(5)});
        form_->show();
    }

    /// Two ports inside the process as the only devices.
    virtual std::unique_ptr<devices::MidiDevices> Devices() const {
        devices::SystemDrivers drivers;
        drivers.outputs.push_back(std::make_unique<midi::PortableOutputDriver>(loop_));
        drivers.inputs.push_back(std::make_unique<midi::PortableInputDriver>(loop_));
        return std::make_unique<devices::MidiDevices>(std::move(drivers), nullptr);
    }

    std::filesystem::path Path(const char* name) const {
        return PathFromQString(folder_.path()) / name;
    }

    std::filesystem::path Write(const char* name, const test::Bytes& bytes) const {
        std::ofstream file(Path(name), std::ios::binary);
        for (const std::uint8_t byte : bytes) {
            file.put(static_cast<char>(byte));
        }
        return Path(name);
    }

    /// Two measures of 3/4 and the start of a third, with a change of tempo at the second.
    static test::Bytes Waltz() {
        const auto conductor = test::TrackBuilder()
                                   .Text(0, 0x03, "Evening & <b>Waltz</b>")
                                   .Tempo(0, 500'000)
                                   .TimeSignature(0, 3, 2)
                                   .Tempo(1440, 600'000)
                                   .End();
        const auto piano = test::TrackBuilder()
                               .Text(0, 0x03, "Piano")
                               .Short(0, 0xB2, 0, 8)
                               .Short(0, 0xB2, 32, 3)
                               .Program(0, 2, 24)
                               .Note(0, 2, 60, 90)
                               .NoteOff(480, 2, 60)
                               .Note(960, 2, 62, 90)
                               .NoteOff(480, 2, 62)
                               .Note(0, 2, 64, 90)
                               .NoteOff(960, 2, 64)
                               .End();
        const auto extra = test::TrackBuilder()
                               .Text(0, 0x03, "zel_ignore Extra")
                               .Note(2880, 9, 36, 90)
                               .NoteOff(110, 9, 36)
                               .End();
        return test::MidiFileBuilder().Track(conductor).Track(piano).Track(extra).Build();
    }

    template <class Widget>
    Widget* Find(const char* objectName) const {
        auto* found = form_->findChild<Widget*>(QLatin1String(objectName));
        EXPECT_NE(found, nullptr) << objectName;
        return found;
    }
    std::string LabelText(const char* objectName) const {
        return Find<QLabel>(objectName)->text().toStdString();
    }
    /// The cells of one row, joined by bars.
    std::string RowText(const char* table, int row) const {
        const QAbstractItemModel* model = Find<QTableView>(table)->model();
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column) {
            cells << model->index(row, column).data().toString();
        }
        return cells.join(u'|').toStdString();
    }
    void Trigger(const char* action) const { Find<QAction>(action)->trigger(); }

    QTemporaryDir folder_;
    std::shared_ptr<midi::loop::LoopBackend> loop_ = std::make_shared<midi::loop::LoopBackend>(2);
    std::unique_ptr<settings::SettingsStore> store_;
    std::unique_ptr<TMainForm> form_;
    ScriptedChooser* chooser_ = nullptr;
    UnansweredBoxes unanswered_;
};

} // namespace tracksmith::forms

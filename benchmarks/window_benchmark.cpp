#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/forms/qt_text.h"
#include "budget_table.h"
#include "song_generator.h"
#include "stopwatch.h"
#include <QApplication>
#include <QEvent>
#include <QTemporaryDir>
#include <QWidget>

#include "app/devices/midi_devices.h"
#include "app/forms/loading/song_loader.h"
#include "app/forms/main_form.h"
#include "app/settings/settings_store.h"

// Measures how long the user waits from opening a song until the window has painted it.

namespace tracksmith::benchmarks {
namespace {

/// Notices when a part of the window is painted with a song.
class PaintWatch final : public QObject {
public:
    PaintWatch(forms::TMainForm& form, QWidget& part) : form_(form) {
        part.installEventFilter(this);
    }

    void Expect(const std::filesystem::path& song) {
        song_ = song;
        painted_ = false;
    }
    bool Painted() const { return painted_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && form_.Session().Work().file.source == song_) {
            painted_ = true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    forms::TMainForm& form_;
    std::filesystem::path song_;
    bool painted_ = false;
};

void WriteFile(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

/// Opens `file` and handles events until it has been painted.
void OpenAndPaint(forms::TMainForm& form, PaintWatch& watch, const std::filesystem::path& file) {
    watch.Expect(file);
    form.OpenMidiFile(file);
    while (!watch.Painted()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void MeasureInput(BudgetTable& table, const char* name, std::size_t events) {
    constexpr int kRounds = 9;
    constexpr double kBudgetMs = 150;
    const QTemporaryDir folder;
    // Two files, so that none is opened again.
    const std::filesystem::path here = forms::PathFromQString(folder.path());
    const std::vector<std::uint8_t> bytes = GenerateSong(events);
    WriteFile(here / "even.mid", bytes);
    WriteFile(here / "odd.mid", bytes);
    settings::SettingsStore store;
    forms::TMainForm form(
        store, std::make_unique<devices::MidiDevices>(devices::SystemDrivers(), nullptr));
    form.show();
    auto* overview = form.findChild<QWidget*>(QStringLiteral("Overview"));
    if (overview == nullptr) {
        throw std::runtime_error("the window has no overview");
    }
    PaintWatch watch(form, *overview);
    OpenAndPaint(form, watch, here / "odd.mid");
    Series times;
    for (int round = 0; round < kRounds; ++round) {
        times.Measure(
            [&] { OpenAndPaint(form, watch, here / (round % 2 == 0 ? "even.mid" : "odd.mid")); });
    }
    table.AtMost(name, 1e3 * times.Median(), kBudgetMs, "ms");
}

int Run(int argc, char** argv) {
    // Nothing of the user's is touched, and no screen is needed.
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    BudgetTable table;
    table.Heading("from opening a song to the painted window");
    MeasureInput(table, "song: 30000 events", 30'000);
    MeasureInput(table, "big: 2000000 events", 2'000'000);
    return table.Over() == 0 ? 0 : 1;
}

} // namespace
} // namespace tracksmith::benchmarks

int main(int argc, char** argv) {
    try {
        return tracksmith::benchmarks::Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

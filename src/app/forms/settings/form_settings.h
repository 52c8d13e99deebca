#pragma once

#include <filesystem>
#include <string>

#include "base/forms/theme.h"
#include "base/text.h"
#include <QByteArray>

#include "app/settings/settings_store.h"

namespace tracksmith::forms {

/// Name of the switch that lets hardware get what the mixer's controls do while nothing plays.
inline constexpr const char* kLiveWhileStopped = "LiveWhileStopped";

/// What the window remembers from one start to the next, each as one value of the user's settings.
/// A missing or broken value reads as the default. User-interface thread only.
class FormSettings {
public:
    explicit FormSettings(settings::SettingsStore& store) : store_(store) {}

    /// The language chosen, else the system's when that is German, else English.
    Language ReadLanguage();
    void WriteLanguage(Language language);

    /// The theme chosen, dark at first.
    Theme ReadTheme();
    void WriteTheme(Theme theme);

    /// The size of text in per cent, 100 to 250, 100 at first.
    int ReadTextSize();
    void WriteTextSize(int percent);

    /// The start page is wanted at the start; `preset` holds until the user has said so or not.
    bool ReadStartPage(bool preset) { return store_.ReadBoolFromUserRegistry("StartPage", preset); }
    void WriteStartPage(bool wanted) { store_.WriteBoolToUserRegistry("StartPage", wanted); }

    /// Place and size of the window as QWidget::saveGeometry gives it; empty at first.
    QByteArray ReadGeometry();
    void WriteGeometry(const QByteArray& geometry);

    /// The folder in which a file was last opened or saved, else the user's home.
    std::filesystem::path ReadLastFolder();
    void WriteLastFolder(const std::filesystem::path& folder);

    /// In which encoding the words of a song are read, by the name of its file: a row of the menu,
    /// 0 for the likeliest one.
    int ReadLyricsEncoding(const std::string& song);
    void WriteLyricsEncoding(const std::string& song, int encoding);

    /// A switch, off at first.
    bool ReadSwitch(const char* name) { return store_.ReadBoolFromUserRegistry(name, false); }
    void WriteSwitch(const char* name, bool on) { store_.WriteBoolToUserRegistry(name, on); }

private:
    settings::SettingsStore& store_;
};

} // namespace tracksmith::forms

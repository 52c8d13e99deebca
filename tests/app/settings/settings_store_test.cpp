#include "app/settings/settings_store.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#ifdef _WIN32
#include <process.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tracksmith::settings {
namespace {

namespace fs = std::filesystem;

/// Settings of its own for every test: a file in a new folder, or a key of the test registry.
class SettingsStoreTest : public testing::Test {
protected:
    void SetUp() override {
        const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
#ifdef _WIN32
        location_ = "Software\\TracksmithTest" + std::to_string(_getpid()) + test;
#else
        folder_ = fs::path(testing::TempDir()) /
                  ("tracksmith_settings_" + std::to_string(getpid()) + test);
        fs::create_directories(folder_);
        location_ = folder_ / "settings.json";
#endif
    }

    void TearDown() override {
#ifdef _WIN32
        TMyRegistry registry;
        registry.SetRootKey(RootKey::CurrentUser);
        registry.SetWriteFlag(true);
        registry.OpenKey("Software");
        registry.DeleteValue(location_.filename().string(), DeleteScope::ValueAndKey);
#else
        fs::remove_all(folder_);
#endif
    }

    fs::path folder_;
    fs::path location_;
};

TEST_F(SettingsStoreTest, ReadsBackWhatWasWrittenAndElseTheDefault) {
    SettingsStore store(location_);
    EXPECT_TRUE(store.ReadBoolFromUserRegistry("Loop", true));
    EXPECT_EQ(store.ReadIntFromUserRegistry("Width", -5), -5);
    EXPECT_EQ(store.ReadStrFromUserRegistry("Instrument", "none"), "none");
    EXPECT_FALSE(store.KeyInUserRegistry("Loop"));

    const std::string text = "Flügel \xF0\x9F\x8E\xB9 \"a\\b\"\r\n\t";
    EXPECT_TRUE(store.WriteBoolToUserRegistry("Loop", false));
    EXPECT_TRUE(store.WriteIntToUserRegistry("Width", std::numeric_limits<std::int32_t>::min()));
    EXPECT_TRUE(store.WriteStrToUserRegistry("Instrument", text));
    EXPECT_TRUE(store.WriteStrToUserRegistry("Größe", ""));
    EXPECT_FALSE(store.ReadBoolFromUserRegistry("Loop", true));
    EXPECT_EQ(store.ReadIntFromUserRegistry("Width", 0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(store.ReadStrFromUserRegistry("Instrument", "none"), text);
    EXPECT_EQ(store.ReadStrFromUserRegistry("Größe", "none"), "");
    EXPECT_TRUE(store.KeyInUserRegistry("Größe"));

    EXPECT_TRUE(store.DeleteFromUserRegistry("Loop"));
    EXPECT_TRUE(store.ReadBoolFromUserRegistry("Loop", true));
    EXPECT_TRUE(store.DeleteFromUserRegistry("Loop"));
}

TEST_F(SettingsStoreTest, AnotherTypeGivesTheDefaultAndCanBeOverwritten) {
    SettingsStore store(location_);
    store.WriteStrToUserRegistry("Value", "12");
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 7), 7);
    EXPECT_TRUE(store.ReadBoolFromUserRegistry("Value", true));
    EXPECT_TRUE(store.WriteIntToUserRegistry("Value", 12));
    EXPECT_EQ(store.ReadStrFromUserRegistry("Value", "no text"), "no text");
    EXPECT_TRUE(store.ReadBoolFromUserRegistry("Value", true));
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 7), 12);
}

TEST_F(SettingsStoreTest, TextThatCannotBeStoredKeepsTheOldValue) {
    SettingsStore store(location_);
    store.WriteStrToUserRegistry("Value", "old");
    EXPECT_FALSE(store.WriteStrToUserRegistry("Value", "latin \xFC"));
    EXPECT_EQ(store.ReadStrFromUserRegistry("Value", "none"), "old");
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 5), 5);
    EXPECT_FALSE(store.TakeTrouble()) << "the store itself is sound";
}

TEST_F(SettingsStoreTest, EverySubkeyNameIsASeparateLevel) {
    SettingsStore store(location_);
    const std::vector<std::string> subkeys = {"Yamaha PSR-S970/S975",
                                              "Yamaha PSR-S970",
                                              "Yamaha PSR-S970\\S975",
                                              "S975",
                                              "Value",
                                              "Yamaha PSR-S970%5CS975",
                                              "\\",
                                              "%",
                                              "",
                                              "\\Value\\",
                                              "..",
                                              "Größe"};
    EXPECT_TRUE(store.WriteIntToUserRegistry("Value", -1));
    for (std::size_t i = 0; i < subkeys.size(); ++i) {
        EXPECT_FALSE(store.KeyInUserRegistrySubdir(subkeys[i], "Value")) << subkeys[i];
        EXPECT_TRUE(store.WriteIntToUserRegistrySubdir(subkeys[i], "Value", static_cast<int>(i)));
    }
    for (std::size_t i = 0; i < subkeys.size(); ++i) {
        EXPECT_EQ(store.ReadIntFromUserRegistrySubdir(subkeys[i], "Value", -2), static_cast<int>(i))
            << subkeys[i];
    }
    // "Value" is also a subkey, which must outlive the value
    EXPECT_TRUE(store.DeleteFromUserRegistry("Value"));
    EXPECT_FALSE(store.KeyInUserRegistry("Value"));
    EXPECT_EQ(store.ReadIntFromUserRegistrySubdir("Value", "Value", -2), 4);
    EXPECT_TRUE(store.DeleteFromUserRegistrySubdir("Value", "Value"));
    EXPECT_FALSE(store.KeyInUserRegistrySubdir("Value", "Value"));
}

TEST_F(SettingsStoreTest, SubdirAccessorsKeepTheirTypes) {
    SettingsStore store(location_);
    EXPECT_TRUE(store.WriteBoolToUserRegistrySubdir("A", "Bool", true));
    EXPECT_TRUE(store.WriteStrToUserRegistrySubdir("A", "Text", "x"));
    EXPECT_TRUE(store.ReadBoolFromUserRegistrySubdir("A", "Bool", false));
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir("A", "Text", ""), "x");
    EXPECT_FALSE(store.ReadBoolFromUserRegistry("Bool", false));
    EXPECT_EQ(store.ReadStrFromUserRegistrySubdir("B", "Text", "default"), "default");
}

TEST_F(SettingsStoreTest, AnotherStoreSeesAWriteAtOnce) {
    SettingsStore first(location_);
    SettingsStore second(location_);
    for (int i = 0; i < 3; ++i) {
        first.WriteIntToUserRegistry("Value", i);
        EXPECT_EQ(second.ReadIntFromUserRegistry("Value", -1), i);
        second.WriteIntToUserRegistry("Other", i);
        EXPECT_EQ(first.ReadIntFromUserRegistry("Other", -1), i);
    }
}

TEST_F(SettingsStoreTest, DeleteAllRemovesTheProductAndNothingElse) {
    TMyRegistry other(location_);
    other.SetRootKey(RootKey::CurrentUser);
    other.SetWriteFlag(true);
    ASSERT_TRUE(other.OpenKey("\\SOFTWARE\\Orlavo\\Tracksmith 123\\"));
    other.WriteInt("Value", 3);
    other.CloseKey();

    SettingsStore store(location_);
    store.WriteIntToUserRegistry("Value", 1);
    store.WriteIntToUserRegistrySubdir("Sub", "Value", 2);
    EXPECT_TRUE(store.DeleteAllRegistry());
    EXPECT_FALSE(store.KeyInUserRegistry("Value"));
    EXPECT_FALSE(store.KeyInUserRegistrySubdir("Sub", "Value"));
    EXPECT_TRUE(store.DeleteAllRegistry());
    EXPECT_TRUE(store.WriteIntToUserRegistry("Value", 4));
    other.SetWriteFlag(false);
    ASSERT_TRUE(other.OpenKey("SOFTWARE\\Orlavo\\Tracksmith 123"));
    EXPECT_EQ(other.ReadInt("Value"), 3);
}

TEST_F(SettingsStoreTest, AKeyOpenedForReadingRefusesWrites) {
    SettingsStore(location_).WriteIntToUserRegistry("Value", 1);
    TMyRegistry registry(location_);
    EXPECT_THROW(registry.OpenKey("SOFTWARE"), RegistryError); // no root yet
    registry.SetRootKey(RootKey::CurrentUser);
    EXPECT_FALSE(registry.OpenKey("SOFTWARE\\Missing"));
    ASSERT_TRUE(registry.OpenKey("SOFTWARE\\Orlavo\\Tracksmith 12"));
    EXPECT_THROW(registry.WriteInt("Value", 2), RegistryError);
    EXPECT_THROW(registry.DeleteValue("Value"), RegistryError);
    EXPECT_EQ(registry.ReadInt("Value"), 1);
    registry.CloseKey();
    EXPECT_THROW(registry.ReadInt("Value"), RegistryError);
}

#ifndef _WIN32

std::string TextOf(const fs::path& file) {
    std::string text(fs::file_size(file), '\0');
    std::ifstream(file, std::ios::binary)
        .read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

void PutText(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

constexpr const char* kSettingsKey = R"(SOFTWARE\\Orlavo\\Tracksmith 12)";

struct Damage {
    const char* name;
    std::string text;
};

class DamagedSettingsTest : public SettingsStoreTest, public testing::WithParamInterface<Damage> {
protected:
    void SetUp() override {
        folder_ = fs::path(testing::TempDir()) / ("tracksmith_damaged_" + std::to_string(getpid()));
        fs::create_directories(folder_);
        location_ = folder_ / "settings.json";
    }
};

TEST_P(DamagedSettingsTest, IsKeptAsideByTheNextWrite) {
    SettingsStore store(location_);
    const std::string& text = GetParam().text;
    PutText(location_, text);
    PutText(folder_ / "settings.json.broken", "earlier");
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 5), 5);
    EXPECT_FALSE(store.KeyInUserRegistry("Value"));
    EXPECT_TRUE(TextOf(location_) == text) << "a read changed the file";
    const std::optional<SettingsTrouble> trouble = store.TakeTrouble();
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->kind, TroubleKind::Damaged);
    EXPECT_NE(trouble->In(Language::German).find(".broken"), std::string::npos);
    EXPECT_NE(trouble->In(Language::English).find(location_.string()), std::string::npos);

    EXPECT_TRUE(store.WriteIntToUserRegistry("Value", 6));
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 5), 6);
    EXPECT_EQ(TextOf(folder_ / "settings.json.broken"), "earlier");
    EXPECT_TRUE(TextOf(folder_ / "settings.json.broken.2") == text);
    EXPECT_FALSE(store.TakeTrouble()) << "told twice";
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedSettingsTest,
    testing::Values(Damage{"Empty", ""}, Damage{"Binary", std::string("\0\xFF\x01", 3)},
                    Damage{"Truncated", std::string("{\"") + kSettingsKey + "\": {\"Value\": 1"},
                    Damage{"Array", "[1, 2]"},
                    Damage{"NoKeys", std::string("{\"") + kSettingsKey + "\": 1}"},
                    Damage{"BadUtf8", "{\"A\": {\"x\": \"\xFC\"}}"},
                    Damage{"Deep", std::string("{\"A\": {\"x\": ") + std::string(200000, '[') +
                                       std::string(200000, ']') + "}}"},
                    Damage{"Huge", std::string("{\"") + kSettingsKey + "\": {\"Value\": 1}}" +
                                       std::string(16U << 20U, ' ')}),
    [](const auto& damage) { return std::string(damage.param.name); });

TEST_F(SettingsStoreTest, ForeignNumbersInTheFileGiveTheDefault) {
    PutText(location_, std::string("{\"") + kSettingsKey +
                           "\": {\"max\": 2147483647, \"over\": 2147483648, \"under\": "
                           "-2147483649, \"big\": 18446744073709551615, \"real\": 5.0, \"bool\": "
                           "true, \"null\": null, \"list\": [1]}}");
    SettingsStore store(location_);
    EXPECT_EQ(store.ReadIntFromUserRegistry("max", 9), 2147483647);
    for (const char* name : {"over", "under", "big", "real", "bool", "null", "list"}) {
        EXPECT_EQ(store.ReadIntFromUserRegistry(name, 9), 9) << name;
        EXPECT_TRUE(store.KeyInUserRegistry(name)) << name;
    }
    EXPECT_TRUE(store.WriteIntToUserRegistry("real", 5));
    EXPECT_EQ(store.ReadIntFromUserRegistry("real", 9), 5);
    EXPECT_NE(TextOf(location_).find("18446744073709551615"), std::string::npos);
}

TEST_F(SettingsStoreTest, AnUnusablePlaceGivesDefaultsAndFalse) {
    PutText(folder_ / "file", "x");
    fs::create_directories(folder_ / "folder.json");
    ASSERT_EQ(mkfifo((folder_ / "pipe.json").c_str(), 0600), 0);
    for (const fs::path& place :
         {folder_ / "file" / "settings.json", folder_ / "folder.json", folder_ / "pipe.json",
          fs::path("/proc/tracksmith/settings.json"), fs::path()}) {
        SettingsStore store(place);
        EXPECT_FALSE(store.WriteStrToUserRegistry("Value", "x")) << place;
        EXPECT_EQ(store.ReadStrFromUserRegistry("Value", "default"), "default") << place;
        EXPECT_FALSE(store.KeyInUserRegistry("Value")) << place;
        EXPECT_FALSE(store.DeleteAllRegistry()) << place;
        const std::optional<SettingsTrouble> writing = store.TakeTrouble();
        ASSERT_TRUE(writing) << place;
        EXPECT_EQ(writing->kind, TroubleKind::Unwritable) << place;
        EXPECT_TRUE(writing->reason) << place;
        const std::optional<SettingsTrouble> reading = store.TakeTrouble();
        EXPECT_TRUE(!reading || reading->kind == TroubleKind::Unreadable) << place;
        EXPECT_FALSE(store.TakeTrouble()) << place;
    }
}

TEST_F(SettingsStoreTest, AWriteKeepsALinkAndLeavesNoTemporaryFile) {
    fs::create_directories(folder_ / "real");
    const fs::path target = folder_ / "real" / "target.json";
    PutText(target, "{}");
    fs::create_symlink(target, location_);
    EXPECT_TRUE(SettingsStore(location_).WriteIntToUserRegistry("Value", 1));
    EXPECT_TRUE(fs::is_symlink(location_));
    EXPECT_EQ(SettingsStore(target).ReadIntFromUserRegistry("Value", 0), 1);
    const auto files = std::distance(fs::directory_iterator(target.parent_path()), {});
    EXPECT_EQ(files, 2) << "the file and its lock";
}

TEST_F(SettingsStoreTest, WaitsOnlyABoundedTimeForAnotherWriter) {
    SettingsStore store(location_);
    ASSERT_TRUE(store.WriteIntToUserRegistry("Value", 1));
    const int lock = open((location_.string() + ".lock").c_str(), O_RDWR);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(store.WriteIntToUserRegistry("Value", 2));
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_LT(waited, kLongestLockWait + std::chrono::milliseconds(300));
    EXPECT_EQ(store.TakeTrouble()->reason, std::errc::device_or_resource_busy);
    EXPECT_EQ(store.ReadIntFromUserRegistry("Value", 0), 1);
    close(lock);
    EXPECT_TRUE(store.WriteIntToUserRegistry("Value", 3));
}

TEST_F(SettingsStoreTest, TwoProgramsWritingAtOnceLoseNothing) {
    constexpr int kWrites = 15;
    std::vector<pid_t> programs;
    for (const char* name : {"a", "b"}) {
        const pid_t program = fork();
        ASSERT_GE(program, 0);
        if (program == 0) {
            SettingsStore store(location_);
            for (int i = 0; i < kWrites; ++i) {
                // A slow disk may let one of them wait too long, which it is told.
                while (!store.WriteIntToUserRegistry(name + std::to_string(i), i)) {
                    usleep(1'000);
                }
            }
            _exit(0);
        }
        programs.push_back(program);
    }
    for (const pid_t program : programs) {
        int status = -1;
        ASSERT_EQ(waitpid(program, &status, 0), program);
        EXPECT_EQ(status, 0);
    }
    SettingsStore store(location_);
    for (int i = 0; i < kWrites; ++i) {
        EXPECT_EQ(store.ReadIntFromUserRegistry("a" + std::to_string(i), -1), i);
        EXPECT_EQ(store.ReadIntFromUserRegistry("b" + std::to_string(i), -1), i);
    }
}

TEST_F(SettingsStoreTest, TheUsersFileLiesInTheConfigurationFolder) {
    const char* const old = getenv("XDG_CONFIG_HOME");
    const std::string saved = old != nullptr ? old : "";
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    EXPECT_TRUE(SettingsStore().WriteIntToUserRegistry("Value", 8));
    if (old != nullptr) {
        setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
    } else {
        unsetenv("XDG_CONFIG_HOME");
    }
    SettingsStore direct(folder_ / "tracksmith" / "settings.json");
    EXPECT_EQ(direct.ReadIntFromUserRegistry("Value", 0), 8);
}

#endif

} // namespace
} // namespace tracksmith::settings

#include "core/settings_store.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "app/startup.h"
#include "base/codepage1253.h"
#include "support/file_size_limit.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Bytes;
using testing::TestApp;

constexpr int kLen = kSettingsRecordLength;

template <class T>
T At(const std::string& file, int record) {
    T v{};
    std::memcpy(&v, file.data() + (record - 1) * kLen, sizeof v);
    return v;
}

std::string TextAt(const std::string& file, int record) {
    return file.substr((record - 1) * kLen + 2, At<uint16_t>(file, record));
}

// A context over its temporary folder, with four media types to select.
struct Prepared : TestApp {
    Prepared() {
        ctx.core.App_Path = folder.Str();
        ctx.form1.List3.SetMultiSelect(true);
        ctx.form1.List3.Assign({"*.mp3", "*.wav", "*.snd", "*.au"});
    }
};

// Values away from their defaults, so that one that does not come back
// cannot pass by luck.
void SetUnusual(TestApp& app) {
    Settings& s = app.ctx.settings;
    MenuSet& m = app.ctx.form1.Menus;
    s.Volume_Step = 7, s.Random_Order = 0, s.Preview_Active = -1, s.Search_Subfolders = 0, s.Replay_Mode = 2;
    s.Trigger_Time = {3600, 7200, 10800};
    s.Trigger_Countdown = {60, 120, 180};
    s.Trigger_Date = "24/12/2025 Χριστούγεννα";
    s.Backtrack_Steps = 9, s.Delete_From_Disk = -1, s.Auto_Start = 0, s.Search_Count = 1, s.Always_On_Top = -1;
    s.Search_Links = {"https://a.example/?q=", "https://β.example/?q="};
    s.Video_Height = 480, s.Move_Points_To_New_Path = -1;
    s.Star_Colors_Index = 3, s.Star_Active = -1, s.Autostart_Index = 2;
    for (const char* mark : {"MnuMoreMultiPreview", "MnuMorePauseActive", "MnuMoreReport", "MnuFavorAuto2"})
        m(mark).SetChecked(true);
    app.ctx.form1.List1.Assign({"/music/α/", "/music/b/"});
    app.ctx.form1.List3.SetSelected(1, true);
    app.ctx.form1.List3.SetSelected(3, true);
}

TEST(SettingsStore, RoundTripsInTheFilesRecordOrder) {
    Prepared writer;
    SetUnusual(writer);
    bool error = true;
    Save_Settings(writer.ctx, error);
    ASSERT_FALSE(error);

    const std::string file = Bytes(Settings_File(writer.ctx));
    // 48 fixed records, 2 links, 2 items of List1, 4 selections of List3.
    ASSERT_EQ(file.size(), size_t{48 + 1 + 2 + 4} * kLen);
    const struct {
        int record, value;
        const char* what;
    } integers[] = {{1, 7, "Volume_Step"},       {5, -1, "the multi-preview mark"},
                    {6, 0, "Search_Subfolders"}, {21, -1, "pause active, from its mark"},
                    {33, 2, "List1's count"},    {31, -1, "the report mark a second time"},
                    {45, 4, "List3's count"},    {47, -1, "the second type selected"}};
    for (const auto& i : integers) EXPECT_EQ(At<int16_t>(file, i.record), i.value) << i.what;
    EXPECT_EQ(At<int32_t>(file, 10), 60) << "times and countdowns alternate";
    EXPECT_EQ(At<uint8_t>(file, 55), 2) << "Autostart_Index, one byte";
    EXPECT_EQ(std::tuple(TextAt(file, 16), TextAt(file, 28)),
              std::tuple(*Utf8ToCp1253("24/12/2025 Χριστούγεννα"), "https://a.example/?q="));

    Prepared app;
    fs::create_directories(app.folder.Path() / "velmora_preferences");
    fs::copy_file(Settings_File(writer.ctx), Settings_File(app.ctx));
    Load_Settings(app.ctx, error);
    EXPECT_FALSE(error);
    const Settings& s = app.ctx.settings;
    const Settings& w = writer.ctx.settings;
    Form1& f = app.ctx.form1;
    EXPECT_EQ(s.Search_Subfolders, -1) << "record 6 is read as a Long and dropped";
    EXPECT_EQ(std::tie(f.Text3.Text(), s.Trigger_Date), std::tuple("9", "24/12/2025 Χριστούγεννα"));
    EXPECT_EQ(std::tuple(f.HScroll1.Value(), s.Preview_Points.size(), s.Report_On, f.List3.SelCount()),
              std::tuple(140, 4u, -1, 2));
    EXPECT_EQ(std::tie(s.Trigger_Countdown, s.Search_Links), std::tie(w.Trigger_Countdown, w.Search_Links));
    EXPECT_EQ(f.List1.Items(), writer.ctx.form1.List1.Items());
    EXPECT_TRUE(f.List3.Selected(3) && app.shell.on_top["Form1"]);
    for (const auto& star : f.Label21) EXPECT_FALSE(star.Visible()) << "Star_Active -1 turns every star's visibility";
    const struct {
        MenuSet& menus;
        const char* name;
        int index;
        bool checked, enabled;
    } marks[] = {
        {f.Menus, "MnuMoreRandom", 0, false, true},         {f.Tray, "mnusystemtraysuffle", 0, false, true},
        {f.Menus, "MnuMoreDuration", 0, false, true},       {f.Menus, "MnuMoreMultiPreview", 0, true, true},
        {f.Menus, "mnumorereplayn", 2, true, true},         {f.Menus, "MnuMorePauseDur", 0, false, true},
        {f.Tray, "TrayFavorAuto", 0, true, true},           {f.Menus, "mnufiledeleterecycle", 0, true, true},
        {f.Menus, "MnuMoreAutoStart", 0, false, true},      {f.Menus, "MnuMoreOnTop", 0, true, true},
        {f.Tray, "MnuSystemTrayTop", 0, true, true},        {f.Menus, "MnuFileMoveReference", 0, true, true},
        {f.Menus, "MnumoreStar_Colors", 3, true, true},     {f.Menus, "MnumoreStar_Colors", 1, false, true},
        {f.Menus, "MnumoreStar_Active", 0, false, false},   {f.Menus, "MnumoreStar_Active", 1, true, true},
        {f.Menus, "MnuPlayAutoStartP", 2, true, true},      {f.Menus, "MnuPlayAutoStartP", 1, false, true},
    };
    for (const auto& m : marks) {
        EXPECT_EQ(std::pair(m.menus(m.name, m.index).Checked(), m.menus(m.name, m.index).Enabled()),
                  std::pair(m.checked, m.enabled))
            << m.name << "(" << m.index << ")";
    }
}

TEST(SettingsStore, ReadingCorrectsThePreviewLengthAndOutOfRangeEntries) {
    Prepared app;
    bool error = true;
    Load_Settings(app.ctx, error);
    EXPECT_FALSE(error) << "no file yet: the defaults stand";

    app.ctx.settings.Preview_Seconds = 1, app.ctx.settings.Star_Colors_Index = -4, app.ctx.settings.Autostart_Index = 9;
    Save_Settings(app.ctx, error);
    ASSERT_FALSE(error);
    app.ctx.settings = Settings{};
    Load_Settings(app.ctx, error);
    EXPECT_EQ(app.ctx.settings.Preview_Seconds, 10) << "below 2 reads as 10";
    EXPECT_TRUE(app.ctx.form1.Menus("MnumoreStar_Colors", 0).Checked()) << "below 0 reads as 0";
    EXPECT_TRUE(error) << "there is no entry 9 of MnuPlayAutoStartP to check";
}

TEST(SettingsStore, AShorterOlderFileKeepsWhatItHeldAndLogsOneLine) {
    Prepared app;
    SetUnusual(app);
    bool error = false;
    Save_Settings(app.ctx, error);
    ASSERT_FALSE(error);

    // An older version ended after Auto_Start (record 26), here with one byte more.
    TestApp later;
    const fs::path older = later.folder.Path() / "velmora_preferences" / "default_pref.qr";
    fs::create_directories(older.parent_path());
    std::ofstream(older, std::ios::binary) << Bytes(Settings_File(app.ctx)).substr(0, 26 * kLen + 1);
    Form_Load(later.ctx);

    const Settings& s = later.ctx.settings;
    EXPECT_EQ(s.Trigger_Date, "24/12/2025 Χριστούγεννα");
    // The last record of the older file stands; the byte after it is not a record.
    EXPECT_EQ(std::tuple(s.Auto_Start, s.Search_Count, s.Star_Colors_Index), std::tuple(0, 0, 1));
    EXPECT_TRUE(later.ctx.form1.Menus("MnuPlayAutoStartP", 1).Checked()) << "defaults still go on their marks";
    const std::string& log = later.Log();
    const std::string line = "-> Λάθος κατά τη φόρτωση προτιμήσεων - Error while loading preferences";
    EXPECT_TRUE(log.find(line) != std::string::npos && log.find(line) == log.rfind(line))
        << "one line, not one per record";
}

// Only a clean save renews the backup. A disk that fills midway leaves the
// preferences of the last save whole, and says so; the next clean save goes
// through as if nothing had happened.
TEST(SettingsStore, OnlyACleanSaveRenewsTheBackupAndAFailedWriteChangesNothing) {
    Prepared app;
    SetUnusual(app);
    const std::string path = Settings_File(app.ctx);
    const std::string backup = path + ".backup";
    bool error = true;
    Save_Settings(app.ctx, error);
    ASSERT_FALSE(error);
    const std::string first = Bytes(path);
    EXPECT_EQ(Bytes(backup), first);

    // A link the code page cannot carry is a write error: no backup.
    const std::vector<std::string> links = app.ctx.settings.Search_Links;
    app.ctx.settings.Volume_Step = 55;
    app.ctx.settings.Search_Links = {"https://例え.example/"};
    Save_Settings(app.ctx, error);
    EXPECT_TRUE(error);
    EXPECT_EQ(At<int16_t>(Bytes(path), 1), 55) << "the rest is written all the same";
    EXPECT_EQ(Bytes(backup), first);

    app.ctx.settings.Search_Links = links;
    Save_Settings(app.ctx, error);
    EXPECT_FALSE(error);
    const std::string before = Bytes(path);
    EXPECT_EQ(Bytes(backup), before);
    ASSERT_GT(before.size(), 8192u);

    app.ctx.settings.Volume_Step = 3;
    {
        testing::FileSizeLimit full(8192);
        ASSERT_TRUE(full.Set());
        Save_Settings(app.ctx, error);
    }
    EXPECT_TRUE(error);
    EXPECT_EQ(Bytes(path), before) << "not one byte of the old file changed";
    EXPECT_EQ(Bytes(backup), before);
    EXPECT_FALSE(fs::exists(path + ".new"));
    EXPECT_TRUE(Holds(app.Log(), "The preferences could not be saved: " + path + ": write: File too large"));
    EXPECT_NE(app.ctx.core.Settings_Fault, "");

    Save_Settings(app.ctx, error);
    EXPECT_FALSE(error);
    EXPECT_EQ(At<int16_t>(Bytes(path), 1), 3);
    EXPECT_EQ(app.ctx.core.Settings_Fault, "");
}

}  // namespace
}  // namespace velmora

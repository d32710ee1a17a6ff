#pragma once
// The user's preferences, with the defaults that stand before the
// preferences file is read. Flags are -1 True and 0 False, as in the file.
// Where a value has no name of its own but only a menu's check mark, the mark
// is the state: the preferences file takes the mark, and the field marked
// "mirrors" follows it on load for code that would rather read a field.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace velmora {

struct Settings {
    int16_t Volume_Step = 100;
    int16_t Random_Order = -1;
    int16_t Preview_Active = 0;
    int16_t Preview_Seconds = 10;
    int16_t Multi_Preview = 0;  // mirrors MnuMoreMultiPreview
    // The preview's sample points: one entry, or four with the multi-preview.
    std::vector<int16_t> Preview_Points{0};
    int16_t Search_Subfolders = -1;
    int16_t Replay_Mode = 0;
    int32_t Shutdown_Armed = 0;
    std::array<int32_t, 3> Trigger_Time{};
    std::array<int32_t, 3> Trigger_Countdown{};
    int32_t Trigger_Mode = 0;
    std::string Trigger_Date;
    int16_t Window_Visible = -1;
    int16_t Backtrack_Steps = 3;
    int16_t Sound_On = 0;
    int16_t Pause_Seconds = 2;
    int16_t Pause_Active = 0;  // mirrors MnuMorePauseActive
    int16_t Report_On = 0;     // mirrors MnuMoreReport
    int16_t Auto_Rating = 0;   // mirrors MnuFavorAuto2 and TrayFavorAuto
    int16_t Recycle_Deleted = -1;
    int16_t Delete_From_Disk = 0;
    int16_t Auto_Start = -1;
    int16_t Search_Count = 0;
    std::vector<std::string> Search_Links;
    int16_t Always_On_Top = 0;
    int16_t Demand_Favor = 0;
    int16_t Delete_On_Disk_Error = 0;  // mirrors mnufiledeleteevendiskerror
    int16_t Video_Height = 0;
    int16_t Video_Width = 0;
    int16_t Save_Auto = -1;
    int16_t Read_Ratings = -1;
    int16_t Keep_Ratings = -1;
    int16_t Favor_Within_Files = -1;
    int16_t Move_Points_To_New_Path = 0;
    int16_t Copy_Points_To_New_Path = 0;
    int16_t Filters_Load = -1;
    int16_t Second_Player = 0;
    int16_t Star_Colors_Index = 1;
    int16_t Splash_Show = -1;
    int16_t Star_Active = 0;
    uint8_t Autostart_Index = 1;

    bool operator==(const Settings&) const = default;
};

}  // namespace velmora

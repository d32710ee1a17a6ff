#include "fileops/file_marks.h"

#include <cstdint>

#include "core/app_context.h"

namespace velmora {

void File_Mark_Click(AppContext& ctx, int mark) {
    static constexpr const char* kRow[] = {"MnuFilecopyreference", "MnuFileMoveReference", "mnufiledeletedisk",
                                           "mnufiledeleterecycle", "mnufiledeleteevendiskerror"};
    Settings& s = ctx.settings;
    int16_t* const kSetting[] = {&s.Copy_Points_To_New_Path, &s.Move_Points_To_New_Path, &s.Delete_From_Disk,
                                 &s.Recycle_Deleted, &s.Delete_On_Disk_Error};
    MenuSet& m = ctx.form1.Menus;
    MenuItem& item = m(kRow[mark]);
    item.SetChecked(!item.Checked());
    *kSetting[mark] = item.Checked() ? -1 : 0;
    if (mark == kMarkDeleteDisk) m("mnufiledeleterecycle").SetEnabled(item.Checked());
    if (mark == kMarkDeleteRecycle) ctx.form1.Check3.SetValue(item.Checked() ? 1 : 0);
}

}  // namespace velmora

#pragma once
// The windows' controls, by the names the logic uses. Views draw these and
// turn clicks into calls of the handlers; no decision lives in a view.

#include <array>
#include <string>
#include <vector>

#include "core/controls.h"
#include "core/metadata_controls.h"
#include "core/menu_table.h"
#include "core/snooze_form.h"
#include "core/video_controls.h"

namespace velmora {

// A text box that shows part of its text selected: the file name at the end
// of the path of the current Track. Start and length count characters.
class PathBox : public TextBox {
public:
    using TextBox::TextBox;
    int SelStart() const { return m_sel_start; }
    int SelLength() const { return m_sel_length; }
    void SetSelection(int start, int length) {
        Set(m_sel_start, start);
        Set(m_sel_length, length);
    }

private:
    int m_sel_start = 0;
    int m_sel_length = 0;
};

// What the log box Text2(0) keeps of its text.
constexpr size_t kLogKeepBytes = 256 * 1024;

// The main window.
// The captions of the catalogue's class box, by Rating_Class.
std::vector<std::string> Class_Captions();

struct Form1 : FormState, MetadataControls {
    Form1();

    // The Track list: paths and the five mirror boxes (number, class, time, size, bit rate).
    ListBox List2{"List2"};
    std::array<ListBox, 5> List3_0{ListBox{"List3_0(0)"}, ListBox{"List3_0(1)"}, ListBox{"List3_0(2)"},
                                   ListBox{"List3_0(3)"}, ListBox{"List3_0(4)"}};
    ScrollBar HScroll2{"HScroll2"};

    // Search page: drive, directory and file boxes, media types, directories found.
    FileSystemBox Drive1{"Drive1"};
    FileSystemBox Dir1{"Dir1"};
    FileSystemBox File1{"File1"};
    ListBox List3{"List3"};
    ListBox List1{"List1"};
    // The type buttons: All, Sound, Video, Lists, Extra.
    std::array<CommandButton, 5> Command7{CommandButton{"Command7(0)"}, CommandButton{"Command7(1)"},
                                          CommandButton{"Command7(2)"}, CommandButton{"Command7(3)"},
                                          CommandButton{"Command7(4)"}};
    // Select all or none of List1, and invert it.
    std::array<CommandButton, 2> Command1{CommandButton{"Command1(0)"}, CommandButton{"Command1(1)"}};
    CommandButton Command2{"Command2"};  // stops the search
    CheckBox Check2{"Check2"};           // take the files from the subfolders of List1
    Frame Frame10{"Frame10"};            // the subfolder choices beside List1
    // Files of File1: all (0) or the selected ones (1).
    std::array<OptionButton, 2> Option4{OptionButton{"Option4(0)"}, OptionButton{"Option4(1)"}};
    // Folders of List1: all, or the selected ones.
    OptionButton Option1_0{"Option1_0"};
    OptionButton Option1_1{"Option1_1"};
    // Add (0) and remove (1) the files of the search page; add and identify; remove.
    std::array<CommandButton, 2> Command18{CommandButton{"Command18(0)"}, CommandButton{"Command18(1)"}};
    CommandButton Command4{"Command4"};
    CommandButton Command5{"Command5"};
    // Filter results and the managing lists.
    ListBox List4{"List4"};
    ListBox List5{"List5"};
    // The catalogue's nine boxes, one per field: 0 the class (six fixed
    // captions, item number = Rating_Class), then duration, size, bit rate,
    // genre, album, artist, year, title, each the sorted distinct values.
    // Label12(k) is the caption of box k.
    std::array<ComboBox, 9> Combo4_0{ComboBox{"Combo4_0(0)"}, ComboBox{"Combo4_0(1)"}, ComboBox{"Combo4_0(2)"},
                                     ComboBox{"Combo4_0(3)"}, ComboBox{"Combo4_0(4)"}, ComboBox{"Combo4_0(5)"},
                                     ComboBox{"Combo4_0(6)"}, ComboBox{"Combo4_0(7)"}, ComboBox{"Combo4_0(8)"}};
    std::array<Label, 9> Label12{Label{"Label12(0)"}, Label{"Label12(1)"}, Label{"Label12(2)"},
                                 Label{"Label12(3)"}, Label{"Label12(4)"}, Label{"Label12(5)"},
                                 Label{"Label12(6)"}, Label{"Label12(7)"}, Label{"Label12(8)"}};
    // The managing frame: run the batch on the filter results (0), show all
    // rows unfiltered (1); copy, move or delete; to the recycle bin; keep the
    // folder tree (offered, never read).
    std::array<CommandButton, 2> Command16{CommandButton{"Command16(0)"}, CommandButton{"Command16(1)"}};
    std::array<OptionButton, 3> Option3{OptionButton{"Option3(0)"}, OptionButton{"Option3(1)"},
                                        OptionButton{"Option3(2)"}};
    CheckBox Check3{"Check3"};
    CheckBox Check4{"Check4"};
    // Choose the destination folder of copies and moves; Text2(5) shows it.
    CommandButton Command19{"Command19"};
    // Search the catalogue for the text of Text2(3) (0); copy the Track's
    // properties (1). Command17 searches the list in view for Text2(4).
    std::array<CommandButton, 2> Command6{CommandButton{"Command6(0)"}, CommandButton{"Command6(1)"}};
    CommandButton Command17{"Command17"};

    // Text2(0) the running report, (1) progress of long work, (2) the item in
    // work, (3) the catalogue's search text, (4) the search text of the list
    // in view, (5) the destination directory.
    std::array<TextBox, 6> Text2{TextBox{"Text2(0)"}, TextBox{"Text2(1)"}, TextBox{"Text2(2)"},
                                 TextBox{"Text2(3)"}, TextBox{"Text2(4)"}, TextBox{"Text2(5)"}};
    // Tag page: title, artist, album, year, comment; genre list; album art.
    std::array<TextBox, 5> Text1{TextBox{"Text1_0"}, TextBox{"Text1_1"}, TextBox{"Text1_2"},
                                 TextBox{"Text1_3"}, TextBox{"Text1_4"}};
    ComboBox Combo1{"Combo1"};
    PictureBox Picture1{"Picture1"};
    CommandButton Command14{"Command14"};
    // Search links.
    ComboBox Combo3{"Combo3"};

    // Transport and its displays.
    CommandButton Command11{"Command11"};  // play / pause / stop
    TextBox Text3{"Text3"};                  // backtrack steps
    std::array<TextBox, 5> Text5{TextBox{"Text5(0)"}, TextBox{"Text5(1)"}, TextBox{"Text5(2)"},
                                 TextBox{"Text5(3)"}, TextBox{"Text5(4)"}};
    PathBox Text6{"Text6"};                  // path of the current Track, its name selected
    Label Label6{"Label6"};                  // play mode
    std::array<Label, 2> Label2{Label{"Label2(0)"}, Label{"Label2(1)"}};
    std::array<Label, 2> Label3{Label{"Label3(0)"}, Label{"Label3(1)"}};
    Slider Slider1{"Slider1"};
    ScrollBar HScroll1{"HScroll1"};          // volume
    // Next (0) and previous (1) Track.
    std::array<CommandButton, 2> Command3{CommandButton{"Command3(0)"}, CommandButton{"Command3(1)"}};
    // Forward and back by the step count, top of history, the second window.
    std::array<CommandButton, 4> Command15{CommandButton{"Command15(0)"}, CommandButton{"Command15(1)"},
                                           CommandButton{"Command15(2)"}, CommandButton{"Command15(3)"}};
    // Open the file's folder, select the current Track, select the played ones.
    std::array<CommandButton, 3> Command10{CommandButton{"Command10(0)"}, CommandButton{"Command10(1)"},
                                           CommandButton{"Command10(2)"}};
    CommandButton Command8{"Command8"};      // rate the current Track

    // The rating display. Looks are drawn from Style:
    //   Command8      0 plain, 1 pressed (the Track has a class)
    //   Label9(i)     0 plain (system colour 0x80000016), 1 marked (0x80000002)
    //   Label10(s)    0 plain (system colour 0x80000003), 1 marked (0x80000002)
    //   Label21(s)    0 flat, 2 sunken (the present class); always a single border
    // Pictures are keys "star_<scheme>_<number>", scheme the Star_Colors_Index
    // 0 gold, 1 blue, 2 black blue, 3 mix; one drawn set per scheme:
    //   Picture2      101..120 (big picture of the class)
    //   Label21(s)    600..619 (the star row)
    // Slots s run 1 to 6 for the classes Unmarked, X, C, B, A, S.
    PictureBox Picture2{"Picture2"};
    // Label9(0) the whole Collection, Label9(1..6) the classes by slot.
    std::array<Label, 7> Label9{Label{"Label9(0)"}, Label{"Label9(1)"}, Label{"Label9(2)"}, Label{"Label9(3)"},
                                Label{"Label9(4)"}, Label{"Label9(5)"}, Label{"Label9(6)"}};
    // The class heads beside Label9, by slot: Label10[s - 1] is Label10(s).
    std::array<Label, 6> Label10{Label{"Label10(1)"}, Label{"Label10(2)"}, Label{"Label10(3)"},
                                 Label{"Label10(4)"}, Label{"Label10(5)"}, Label{"Label10(6)"}};
    // The star row, by slot: Label21[s - 1] is Label21(s).
    std::array<Label, 6> Label21{Label{"Label21(1)"}, Label{"Label21(2)"}, Label{"Label21(3)"},
                                 Label{"Label21(4)"}, Label{"Label21(5)"}, Label{"Label21(6)"}};

    // The shared progress bar and its percentage.
    std::array<Shape, 2> Shape1{Shape{"Shape1(0)"}, Shape{"Shape1(1)"}};
    std::array<Label, 2> Label11{Label{"Label11(0)"}, Label{"Label11(1)"}};

    MultiPage MultiPage1{"MultiPage1"};
    Frame Frame1{"Frame1"}, Frame4{"Frame4"}, Frame6{"Frame6"}, Frame8{"Frame8"}, Frame12{"Frame12"};

    // The PlaybackClock.
    Timer Timer1{"Timer1"};

    // The preview panes of Frame6, muted, one film from twelve points.
    std::array<PictureArea, kPaneCount> WindowsMediaPlayer3{
        PictureArea{"WindowsMediaPlayer3(0)"}, PictureArea{"WindowsMediaPlayer3(1)"},
        PictureArea{"WindowsMediaPlayer3(2)"}, PictureArea{"WindowsMediaPlayer3(3)"},
        PictureArea{"WindowsMediaPlayer3(4)"}, PictureArea{"WindowsMediaPlayer3(5)"},
        PictureArea{"WindowsMediaPlayer3(6)"}, PictureArea{"WindowsMediaPlayer3(7)"},
        PictureArea{"WindowsMediaPlayer3(8)"}, PictureArea{"WindowsMediaPlayer3(9)"},
        PictureArea{"WindowsMediaPlayer3(10)"}, PictureArea{"WindowsMediaPlayer3(11)"}};

    MenuSet Menus{MainMenuRows()};
    MenuSet Tray{TrayMenuRows()};
};

// The video window.
struct Form2 : FormState {
    Form2() : FormState("Form2") { SetVisible(false); }
    // The window's inner area, and the picture within it.
    PictureArea Inner{"Form2.Inner"};
    PictureArea WindowsMediaPlayer1{"Form2.WindowsMediaPlayer1"};
    bool Loaded = false;       // Form_Load has run and no unload since
    bool Unloading = false;    // Form_QueryUnload is under way
    bool Full_Screen = false;  // the view fills the screen; its size is not the window's own
    // Raised by the view: the user resized the window, or closes it.
    Signal<> Resize;
    Signal<> QueryUnload;
};

// The about slide show.
struct Form3 : FormState {
    Form3() : FormState("Form3") { SetVisible(false); }
};

// The small second player window.
struct Form4 : FormState {
    Form4() : FormState("Form4") {
        SetVisible(false);
        HScroll1.SetMax(2000);  // twentieths of the volume, as on the main window
        Timer1.SetInterval(1000);
    }
    Timer Timer1{"Form4.Timer1"};

    // The mirrors of the main window's transport and displays.
    CommandButton Command11{"Form4.Command11"};
    std::array<TextBox, 5> Text5{TextBox{"Form4.Text5(0)"}, TextBox{"Form4.Text5(1)"}, TextBox{"Form4.Text5(2)"},
                                 TextBox{"Form4.Text5(3)"}, TextBox{"Form4.Text5(4)"}};
    TextBox Text1{"Form4.Text1"};            // "[Track] - [count]"
    Label Label4{"Form4.Label4"};            // the counts
    Label Label6{"Form4.Label6"};            // play mode
    std::array<Label, 2> Label7{Label{"Form4.Label7(0)"}, Label{"Form4.Label7(1)"}};
    Label Label9{"Form4.Label9"};            // path of the current Track
    PictureBox Picture1{"Form4.Picture1"};   // album art
    // The mirrors of the rating display: button, big picture, star row by slot.
    CommandButton Command8{"Form4.Command8"};
    PictureBox Command6{"Form4.Command6"};
    std::array<Label, 6> Label21{Label{"Form4.Label21(1)"}, Label{"Form4.Label21(2)"}, Label{"Form4.Label21(3)"},
                                 Label{"Form4.Label21(4)"}, Label{"Form4.Label21(5)"}, Label{"Form4.Label21(6)"}};
    Slider Slider1{"Form4.Slider1"};
    ScrollBar HScroll1{"Form4.HScroll1"};
    // Its own transport, each passing to the main window's namesake.
    std::array<CommandButton, 2> Command3{CommandButton{"Form4.Command3(0)"}, CommandButton{"Form4.Command3(1)"}};
    std::array<CommandButton, 4> Command15{CommandButton{"Form4.Command15(0)"}, CommandButton{"Form4.Command15(1)"},
                                           CommandButton{"Form4.Command15(2)"}, CommandButton{"Form4.Command15(3)"}};
    TextBox Text3{"Form4.Text3"};
    CommandButton Command1{"Form4.Command1"};  // back to the main window
    // The main window's clock period while this window plays.
    int Kept_Interval = 1000;
    Signal<> QueryUnload;  // raised by the view when the user closes the window
};

// The start screen.
struct FrmSplash : FormState {
    FrmSplash() : FormState("frmSplash") { SetVisible(false); }
};

}  // namespace velmora

#pragma once
// The window controls as plain data. The logic reads and writes them; a view
// subscribes to Changed and redraws when the loop next gives way, never per
// row inside a long loop.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/packed_texts.h"
#include "base/signal.h"
#include "core/folded_text_index.h"

namespace velmora {

// What changed, so a view can redraw no more than it must.
enum class Change { Contents, Selection, Index, Look };

class Control {
public:
    explicit Control(std::string name) : m_name(std::move(name)) {}
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    const std::string& Name() const { return m_name; }
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool on) { Set(m_enabled, on); }
    bool Visible() const { return m_visible; }
    void SetVisible(bool on) { Set(m_visible, on); }
    const std::string& ToolTip() const { return m_tooltip; }
    void SetToolTip(std::string tip) { Set(m_tooltip, std::move(tip)); }

    Signal<Change> Changed;

protected:
    template <class T>
    void Set(T& field, T value, Change kind = Change::Look) {
        if (field == value) return;
        field = std::move(value);
        Changed.emit(kind);
    }

private:
    std::string m_name;
    bool m_enabled = true;
    bool m_visible = true;
    std::string m_tooltip;
};

// A list box. Its items are packed into one buffer (a full Collection's
// paths and their five mirrors are six of them); an item is read as a view
// that holds until the next change of the items. Finds are without regard
// to case; the exact find is answered from an index of hashes kept beside
// the items, with the row a scan would give.
class ListBox : public Control {
public:
    using Control::Control;

    int ListCount() const { return static_cast<int>(m_items.size()); }
    // Empty for a row that does not exist.
    std::string_view List(int index) const;
    void SetList(int index, std::string_view text);
    // Appends (index -1 or ListCount) or inserts at index; a sorted box ignores
    // the index and keeps its order. Returns the row the item went to.
    int AddItem(std::string_view text, int index = -1);
    void RemoveItem(int index);
    void Clear();

    int ListIndex() const { return m_list_index; }
    // Setting the index raises Click, as a user's click would.
    void SetListIndex(int index);
    bool Selected(int index) const;
    void SetSelected(int index, bool on);
    // The selection of one row as a view stores a gesture, without a Click:
    // the view raises the gesture's one Click when all its rows are stored.
    // True when the row's selection changed.
    bool Store_Selected(int index, bool on);
    int SelCount() const;
    int TopIndex() const { return m_top_index; }
    void SetTopIndex(int index) { Set(m_top_index, index, Change::Index); }

    bool Sorted() const { return m_sorted; }
    void SetSorted(bool on) { m_sorted = on; }
    bool MultiSelect() const { return m_multi_select; }
    void SetMultiSelect(bool on) { m_multi_select = on; }

    // The whole item, without regard to case, searching the rows behind start
    // and then from the top, up to and including start; start -1 searches the
    // whole list from the top. -1 when not found.
    int FindExact(std::string_view text, int start = -1) const;
    // The same, for items that begin with text.
    int FindPrefix(std::string_view text, int start = -1) const;

    // Replaces all items at once (one notification).
    void Assign(PackedTexts items);
    void Assign(const std::vector<std::string>& items) { Assign(PackedTexts(items)); }
    const PackedTexts& Items() const { return m_items; }
    // Changes with every change of the items, and is never the same for two
    // boxes: whoever stored the items can tell they are still the same
    // without comparing them. 0 for a box whose items never changed.
    uint64_t Revision() const { return m_revision; }
    // The row whose text alone the last change of the items set, or -1 when
    // that change added, removed or replaced rows: a view redraws one row
    // instead of all of them.
    int Last_Item_Changed() const { return m_last_item; }

    Signal<> Click;
    Signal<> DblClick;   // raised by the view; the index is already set
    Signal<> MouseDown;  // raised by the view for a click of the user's, once the index is set

protected:
    // Called when SetListIndex has set the index, before the Click.
    virtual void Index_Chosen(int) {}

private:
    void Touch(int item = -1);  // contents changed; item: the one row whose text alone changed
    int SortedPosition(std::string_view text) const;

    PackedTexts m_items;
    uint64_t m_revision = 0;
    int m_last_item = -1;
    std::vector<char> m_selected;
    int m_list_index = -1;
    int m_top_index = 0;
    bool m_sorted = false;
    bool m_multi_select = false;
    // Built on the first find after anything but an append, so adding with
    // a find before each add stays linear in all.
    mutable FoldedTextIndex m_index;
    mutable bool m_index_valid = true;
};

// A combo box: a list box with an edit text. Choosing a row (or none, -1)
// puts its text (or nothing) into the edit text before the Click; typing
// into it is told by the view through Change_.
class ComboBox : public ListBox {
public:
    using ListBox::ListBox;
    const std::string& Text() const { return m_text; }
    void SetText(std::string text) { Set(m_text, std::move(text), Change::Contents); }
    Signal<> Change_;

protected:
    void Index_Chosen(int index) override { SetText(index >= 0 ? std::string(List(index)) : std::string()); }

private:
    std::string m_text;
};

// The drive, directory and file list boxes of the search page: a list with
// the path (or drive) it shows and, for the file list, the patterns it keeps.
class FileSystemBox : public ListBox {
public:
    using ListBox::ListBox;
    const std::string& Path() const { return m_path; }
    void SetPath(std::string path) {
        Set(m_path, std::move(path), Change::Contents);
        PathChange.emit();
    }
    const std::string& Pattern() const { return m_pattern; }
    void SetPattern(std::string pattern) { Set(m_pattern, std::move(pattern), Change::Contents); }
    Signal<> PathChange;

private:
    std::string m_path;
    std::string m_pattern = "*.*";
};

class TextBox : public Control {
public:
    using Control::Control;
    // Lines put in front since the last read are joined to the text here.
    const std::string& Text() const {
        if (!m_heads.empty()) Join_Heads();
        return m_text;
    }
    // The first line of the text, without its line break, read without
    // joining what was put in front: a terminal that echoes every new line
    // of a log would otherwise copy the whole log per line.
    std::string_view First_Line() const;
    void SetText(std::string text);
    bool Locked() const { return m_locked; }
    void SetLocked(bool on) { Set(m_locked, on); }
    // Keeps at most this many bytes of text, dropping whole lines from the
    // end: for a log whose newest line comes first, whose every new line
    // copies all of it. 0 keeps everything.
    void SetKeepBytes(size_t bytes) { m_keep_bytes = bytes; }
    // The same as SetText(head + Text()), without making the text anew:
    // heads wait in arrival order and are joined, newest first, when the
    // text is read, so a walk that logs a line per file and is drawn a few
    // times a second moves the kept text a few times a second, not per line.
    void Prepend(std::string_view head);

private:
    void Cut_To_Keep(std::string& text) const;
    void Join_Heads() const;

    mutable std::string m_text;
    mutable std::string m_heads;             // waiting heads, oldest first
    mutable std::vector<size_t> m_head_ends;  // where each waiting head ends in m_heads
    size_t m_keep_bytes = 0;
    bool m_locked = false;
};

// Label, command button, frame, menu item: a caption and, for some, a check
// mark, a pressed look and a picture key that the view draws.
class CaptionControl : public Control {
public:
    using Control::Control;
    const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string caption) { Set(m_caption, std::move(caption), Change::Contents); }
    bool Checked() const { return m_checked; }
    void SetChecked(bool on) { Set(m_checked, on); }
    // The picture the view shows ("play", "pause", "stop", a star number, ...).
    const std::string& Picture() const { return m_picture; }
    void SetPicture(std::string key) { Set(m_picture, std::move(key)); }
    // 0 plain, 1 pressed or marked: the looks a button or label switches between.
    int Style() const { return m_style; }
    void SetStyle(int style) { Set(m_style, style); }

    Signal<> Click;

private:
    std::string m_caption;
    bool m_checked = false;
    std::string m_picture;
    int m_style = 0;
};

using Label = CaptionControl;
using CommandButton = CaptionControl;
using Frame = CaptionControl;
using PictureBox = CaptionControl;

// Check box and option button: Value 0/1 (check box) or False/True (option).
class ValueControl : public CaptionControl {
public:
    using CaptionControl::CaptionControl;
    int Value() const { return m_value; }
    void SetValue(int value) { Set(m_value, value, Change::Contents); }

private:
    int m_value = 0;
};

using CheckBox = ValueControl;
using OptionButton = ValueControl;

// Slider and scroll bar.
class RangeControl : public Control {
public:
    using Control::Control;
    int Min() const { return m_min; }
    int Max() const { return m_max; }
    int Value() const { return m_value; }
    int LargeChange() const { return m_large_change; }
    void SetMin(int v) { Set(m_min, v); }
    void SetMax(int v) { Set(m_max, v); }
    void SetValue(int v) { Set(m_value, v, Change::Contents); }
    void SetLargeChange(int v) { Set(m_large_change, v); }

    Signal<> Scroll;  // the user moved it

private:
    int m_min = 0, m_max = 100, m_value = 0, m_large_change = 1;
};

using Slider = RangeControl;
using ScrollBar = RangeControl;

// A bar drawn as a width in percent (the progress bar of long loops).
class Shape : public Control {
public:
    using Control::Control;
    int Width() const { return m_width; }
    void SetWidth(int w) { Set(m_width, w, Change::Contents); }

private:
    int m_width = 0;
};

// The tabbed page group; Value is the page shown.
class MultiPage : public Control {
public:
    using Control::Control;
    int Value() const { return m_value; }
    void SetValue(int v) {
        if (m_value == v) return;
        m_value = v;
        Changed.emit(Change::Contents);
        Change_.emit();
    }
    Signal<> Change_;

private:
    int m_value = 0;
};

// A timer control: the event loop it is attached to fires Tick every Interval
// ms while Enabled. Setting either restarts the count, as a classic timer does.
class Timer : public Control {
public:
    explicit Timer(std::string name) : Control(std::move(name)) { SetEnabled(false); }
    int Interval() const { return m_interval; }
    void SetInterval(int ms) {
        m_interval = ms;
        Changed.emit(Change::Contents);
    }
    Signal<> Tick;

private:
    int m_interval = 0;
};

// A menu row. Rows of a control array share a name and differ by Index.
class MenuItem : public CaptionControl {
public:
    MenuItem(std::string name, int index) : CaptionControl(std::move(name)), m_index(index) {}
    int Index() const { return m_index; }
    std::vector<MenuItem*>& Children() { return m_children; }
    const std::vector<MenuItem*>& Children() const { return m_children; }
    bool IsSeparator() const { return Caption() == "-"; }

private:
    int m_index;
    std::vector<MenuItem*> m_children;
};

// A window: caption, shown or hidden, window state and placement.
class FormState : public Control {
public:
    using Control::Control;
    const std::string& Caption() const { return m_caption; }
    void SetCaption(std::string c) { Set(m_caption, std::move(c), Change::Contents); }
    // 0 normal, 1 minimised, 2 maximised.
    int WindowState() const { return m_window_state; }
    void SetWindowState(int s) { Set(m_window_state, s); }
    void Show() { SetVisible(true); }
    void Hide() { SetVisible(false); }
    bool TopMost() const { return m_top_most; }
    void SetTopMost(bool on) { Set(m_top_most, on); }
    // The mouse pointer over the program while it works: kDefaultPointer, or
    // kHourglass for the length of a long run.
    static constexpr int kDefaultPointer = 0;
    static constexpr int kHourglass = 11;
    int MousePointer() const { return m_mouse_pointer; }
    void SetMousePointer(int pointer) { Set(m_mouse_pointer, pointer); }

private:
    std::string m_caption;
    int m_window_state = 0;
    bool m_top_most = false;
    int m_mouse_pointer = kDefaultPointer;
};

}  // namespace velmora

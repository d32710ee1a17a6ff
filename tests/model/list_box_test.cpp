#include <gtest/gtest.h>

#include <random>

#include "base/codepage1253.h"
#include "core/controls.h"

namespace velmora {
namespace {

// What a plain scan answers: rows behind start, then from the top up to start.
int ScanFind(const ListBox& box, const std::string& text, int start, bool prefix) {
    const int n = box.ListCount();
    if (n == 0) return -1;
    if (start < 0 || start >= n) start = n - 1;
    const std::string want = FoldCase(text);
    for (int k = 1; k <= n; ++k) {
        const int row = (start + k) % n;
        const std::string item = FoldCase(box.List(row));
        if (prefix ? item.starts_with(want) : item == want) return row;
    }
    return -1;
}

// What the scan below never meets: accented capitals, and an empty box.
TEST(ListBox, FindsWithoutRegardToCaseOrAccentedCapitals) {
    ListBox box("List2");
    for (const char* s : {"/music/Alpha.mp3", "/MUSIC/ALPHA.MP3", "/music/Ωδή.mp3"}) box.AddItem(s);
    EXPECT_EQ(std::vector({box.FindExact("/music/alpha.mp3", 0), box.FindExact("/music/ωδή.mp3"),
                           box.FindPrefix("/music/ΩΔ"), ListBox("empty").FindExact("x")}),
              std::vector({1, 2, 2, -1}));
}

// The packed items against a plain vector, and the indexed find against a
// scan, through adds, inserts, removes and replacements: texts empty, with a
// NUL inside, and long enough that the unused bytes get packed away.
TEST(ListBox, ItemsAndIndexedFindAgreeWithAPlainListThroughEveryChange) {
    std::mt19937 rng(1234);
    ListBox box("List2");
    std::vector<std::string> plain;
    const std::vector<std::string> words = {"a", "A", "b", "Β", "β", "ab", "AB", "", std::string("a\0b", 3),
                                            std::string(300, 'x'), std::string(300, 'X') + "Ω"};
    for (int step = 0; step < 3000; ++step) {
        const int op = static_cast<int>(rng() % 10);
        const std::string w = words[rng() % words.size()];
        const int n = box.ListCount();
        if (op < 5 || n == 0) {
            box.AddItem(w);
            plain.push_back(w);
        } else if (op < 7) {
            const int at = static_cast<int>(rng() % static_cast<unsigned>(n));
            box.AddItem(w, at);
            plain.insert(plain.begin() + at, w);
        } else if (op < 8) {
            const int at = static_cast<int>(rng() % static_cast<unsigned>(n));
            box.RemoveItem(at);
            plain.erase(plain.begin() + at);
        } else if (op < 9) {
            const int at = static_cast<int>(rng() % static_cast<unsigned>(n));
            box.SetList(at, w);
            plain[static_cast<size_t>(at)] = w;
        } else {
            const int start = static_cast<int>(rng() % static_cast<unsigned>(n + 2)) - 1;
            ASSERT_EQ(box.FindExact(w, start), ScanFind(box, w, start, false)) << step;
            ASSERT_EQ(box.FindPrefix(w, start), ScanFind(box, w, start, true)) << step;
        }
        ASSERT_EQ(box.Items(), plain) << step;
    }
    // Texts replaced by longer ones leave theirs unused; never more unused
    // bytes are kept than used ones, beyond the few not worth packing.
    for (int round = 1; round <= 3; ++round)
        for (int row = 0; row < box.ListCount(); ++row) box.SetList(row, std::string(400 + round, 'y'));
    EXPECT_LE(box.Items().buffer_bytes(), 2 * 403 * plain.size() + 256);
    EXPECT_EQ(box.List(box.ListCount() - 1), std::string(403, 'y'));
}

TEST(ListBox, IndexAndSelectionFollowInsertsAndRemoves) {
    ListBox box("List2");
    for (const char* s : {"a", "b", "c"}) box.AddItem(s);
    int clicks = 0;
    auto sub = box.Click.connect([&] { ++clicks; });
    box.SetListIndex(1);
    EXPECT_EQ(clicks, 1) << "setting the index clicks, as on a classic list";
    EXPECT_TRUE(box.Selected(1));
    box.AddItem("z", 0);
    EXPECT_EQ(box.ListIndex(), 2);
    box.RemoveItem(0);
    EXPECT_EQ(box.ListIndex(), 1);
    box.RemoveItem(1);
    EXPECT_EQ(box.ListIndex(), -1);
    box.SetListIndex(99);
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST(ListBox, SortedBoxKeepsItsOrderWithoutRegardToCase) {
    ComboBox combo("Combo4_0");
    combo.SetSorted(true);
    for (const char* s : {"delta", "Alpha", "charlie", "Bravo"}) combo.AddItem(s);
    EXPECT_EQ(combo.Items(), std::vector<std::string>({"Alpha", "Bravo", "charlie", "delta"}));
    EXPECT_EQ(combo.FindExact("CHARLIE"), 2);
}

// A view redraws one row or all of them, and a save skips a list whose
// revision it stored: both trust what a change says of itself.
TEST(ListBox, ChangesAreAnnouncedOncePerCallWithTheirRevisionAndRow) {
    ListBox box("List2"), other("List5");
    int contents = 0;
    auto sub = box.Changed.connect([&](Change c) { contents += c == Change::Contents; });
    EXPECT_EQ(box.Revision(), 0u);
    box.Assign({"a", "b", "c"});
    other.Assign({"a", "b", "c"});
    EXPECT_NE(box.Revision(), other.Revision()) << "two boxes never share a revision";
    uint64_t was = box.Revision();
    box.SetList(1, "b");
    EXPECT_EQ(std::tuple(box.Revision(), contents), std::tuple(was, 1)) << "the same text again is no change";
    box.SetList(1, "bee");
    EXPECT_EQ(box.Last_Item_Changed(), 1);
    EXPECT_NE(box.Revision(), was);
    was = box.Revision();
    box.AddItem("d", 0);
    EXPECT_EQ(std::tuple(box.Last_Item_Changed(), box.List(1)), std::tuple(-1, "a"));
    EXPECT_NE(box.Revision(), was);
    box.Clear();
    EXPECT_EQ(contents, 4);
    sub.reset();
    box.AddItem("e");
    EXPECT_EQ(contents, 4) << "an ended subscription hears nothing";
}

}  // namespace
}  // namespace velmora

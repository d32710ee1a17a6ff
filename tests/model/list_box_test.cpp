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

TEST(ListBox, IndexedFindAgreesWithAScanThroughAddsInsertsAndRemoves) {
    std::mt19937 rng(1234);
    ListBox box("List2");
    const std::vector<std::string> words = {"a", "A", "b", "Β", "β", "ab", "AB", "c"};
    for (int step = 0; step < 3000; ++step) {
        const int op = rng() % 10;
        const std::string w = words[rng() % words.size()];
        if (op < 5 || box.ListCount() == 0) {
            box.AddItem(w);
        } else if (op < 7) {
            box.AddItem(w, static_cast<int>(rng() % box.ListCount()));
        } else if (op < 8) {
            box.RemoveItem(static_cast<int>(rng() % box.ListCount()));
        } else if (op < 9) {
            box.SetList(static_cast<int>(rng() % box.ListCount()), w);
        } else {
            const int start = static_cast<int>(rng() % (box.ListCount() + 2)) - 1;
            ASSERT_EQ(box.FindExact(w, start), ScanFind(box, w, start, false)) << step;
            ASSERT_EQ(box.FindPrefix(w, start), ScanFind(box, w, start, true)) << step;
        }
    }
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

TEST(ListBox, ChangesAreAnnouncedOncePerCall) {
    ListBox box("List2");
    int contents = 0;
    auto sub = box.Changed.connect([&](Change c) { contents += c == Change::Contents; });
    box.Assign({"a", "b", "c"});
    box.AddItem("d");
    box.Clear();
    EXPECT_EQ(contents, 3);
    sub.reset();
    box.AddItem("e");
    EXPECT_EQ(contents, 3) << "an ended subscription hears nothing";
}

}  // namespace
}  // namespace velmora

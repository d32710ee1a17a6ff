#include "core/track_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <tuple>

#include "base/text_format.h"

namespace velmora {
namespace {

// A table of n rows whose every column says which row it started on.
TrackTable Numbered(int n) {
    TrackTable t;
    t.Track_Count = n;
    t.Dimension(n);
    for (int r = 0; r < n; ++r) {
        t.Played_Number[r] = r + 1;
        t.Duration[r] = Currency(100 + r);
        t.File_Size[r] = Currency(10 + r);
        t.Stop_Position[r] = Currency(1000 + r);
        t.Bitrate[r] = static_cast<int16_t>(128 + r);
        t.Rating_Class[r] = static_cast<int16_t>(r % 6);
        t.Title[r] = "title" + std::to_string(r);
        t.Artist[r] = "artist" + std::to_string(r), t.Genre[r] = "genre" + std::to_string(r);
        t.Album[r] = "album" + std::to_string(r), t.Year[r] = std::to_string(1960 + r);
        t.Slot_Value[r][15] = static_cast<int16_t>(r);
        t.Slot_Text[r].Set(0, "slot" + std::to_string(r));
        t.Identified[r] = (r % 2) == 0;
        t.Saved[r] = true;
        t.Total_Duration += t.Duration[r];
        t.Total_Size += t.File_Size[r];
        t.Class_Count[r % 6] += Currency(1);
        t.Class_Size[r % 6] += t.File_Size[r];
        t.Class_Duration[r % 6] += t.Duration[r];
    }
    return t;
}

TEST(TrackTable, CompactMovesEveryColumnMarksTheMovedRowsUnsavedAndHoldsAtTheEdges) {
    TrackTable t = Numbered(5);
    Compact_TrackTable(t, 1, 5);

    // Rows behind the removed one moved up by one...
    EXPECT_EQ(t.Title, (std::vector<std::string>{"title0", "title2", "title3", "title4", "", ""}));
    EXPECT_EQ(t.Played_Number, (std::vector<int32_t>{1, 3, 4, 5, 0, 0}));
    EXPECT_EQ(std::tuple(t.Duration[1], t.File_Size[1], t.Bitrate[3]), std::tuple(Currency(102), Currency(12), 132));
    EXPECT_EQ(std::tuple(t.Artist[1], t.Genre[2], t.Album[3], t.Year[3]), std::tuple("artist2", "genre3", "album4", "1964"));
    EXPECT_EQ(t.Rating_Class[1], 2);
    EXPECT_EQ(std::tuple(t.Slot_Value[2][15], t.Slot_Text[2][0]), std::tuple(3, "slot3"));
    EXPECT_EQ(t.Identified, (std::vector<bool>{true, true, false, true, false, false}));
    // ...under the stop position of the row before, kept as it stands, and
    // unsaved: on the disk every one of them still stands a row further down,
    EXPECT_EQ(t.Stop_Position, (std::vector<Currency>{Currency(1000), Currency(1001), Currency(1002),
                                                       Currency(1003), Currency(), Currency()}));
    EXPECT_EQ(t.Saved, (std::vector<bool>{true, false, false, false, false, false}));
    // and the blanked last row holds the text of 0 in every slot.
    for (int j = 0; j < kSlotCount; ++j) EXPECT_EQ(t.Slot_Text[4][j], "0") << j;

    // Totals lost row 1's share: duration 101, size 11, class 1.
    EXPECT_EQ(std::tuple(t.Total_Duration, t.Total_Size, t.Class_Count[1], t.Class_Size[1]),
              std::tuple(Currency(100 + 102 + 103 + 104), Currency(10 + 12 + 13 + 14), Currency(0), Currency(0)));

    // At the edges: a row of no class, a total already at zero, the last row.
    t = Numbered(3);
    t.Rating_Class[0] = 6;  // shows as "-", but belongs to no class
    const auto counts = t.Class_Count;
    t.Total_Size = Currency(0);  // a total not above zero is not reduced
    Compact_TrackTable(t, 0, 3);
    EXPECT_EQ(std::tuple(t.Class_Count, t.Total_Size, t.Title[0]), std::tuple(counts, Currency(0), "title1"));

    Compact_TrackTable(t, 1, 2);  // the last row: cleared, nothing moves
    EXPECT_EQ(t.Title, (std::vector<std::string>{"title1", "", "", ""}));
    EXPECT_EQ(std::tuple(t.Stop_Position[0], t.Stop_Position[1], t.Saved[0]),
              std::tuple(Currency(1000), Currency(), false));
}

TEST(TrackTable, RenumberClosesGapsKeepingOrderAndTies) {
    TrackTable t = Numbered(6);
    t.Played_Number = {0, 7, 3, 3, 12, 1, 0};
    t.Played_High = 12;
    t.Played_Count = 7;  // stepped back five
    Renumber_Played(t);
    // Order by number; of the two 3s the row found first stays first.
    EXPECT_EQ(t.Played_Number, (std::vector<int32_t>{0, 4, 2, 3, 5, 1, 0}));
    EXPECT_TRUE(t.Saved[5]) << "a row whose number did not change stays saved";
    EXPECT_FALSE(t.Saved[2] || t.Saved[4]);
    // The old distance of five back stays: high 5, count 0.
    EXPECT_EQ(std::tuple(t.Played_High, t.Played_Count), std::tuple(5, 0));

    t = Numbered(4);
    t.Played_Number = {10, 20, 0, 30, 0};
    t.Played_High = t.Played_Count = 30;
    t.Current_Track = 0;
    Renumber_Played(t);
    EXPECT_EQ(std::tuple(t.Played_Count, t.Played_High), std::tuple(3, 3));
    EXPECT_EQ(t.Current_Track, 3) << "to the row of the new count";
}

TEST(TrackTable, MirrorTexts) {
    EXPECT_EQ(std::tuple(Row_Number_Text(0), Row_Number_Text(32765)), std::tuple("00001", "32766"));
    for (int rating : {-1, 0, 6}) EXPECT_EQ(Class_Letter(rating), "-") << rating;
    EXPECT_EQ(std::tuple(Duration_Text(Currency(3725)), Duration_Text(Currency(0)), Duration_Text(Currency(360000))),
              std::tuple("01:02:05", "00:00:00", "100:00:00"));
    EXPECT_EQ(std::tuple(Size_Text(Currency::FromRaw(3'5000)), Size_Text(Currency::FromRaw(1023'9900)),
                         Size_Text(Currency(1536))),
              std::tuple("03.50Mb", "1023.99Mb", "01.50Gb"));
    EXPECT_EQ(std::tuple(Bitrate_Text(7), Bitrate_Text(1411)), std::tuple("007", "1411"));
}

// The mirrors build their digits by hand; the pattern formatter is the rule
// they must agree with, down to negatives, halves and the extremes.
TEST(TrackTable, MirrorTextsAgreeWithTheirPatterns) {
    for (int64_t v : {int64_t{-100000}, int64_t{-7}, int64_t{0}, int64_t{99999}, int64_t{123456},
                      std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max()}) {
        const int row = static_cast<int>(std::clamp<int64_t>(v, -100000, 100000));
        EXPECT_EQ(Row_Number_Text(row), Format(int64_t{row} + 1, "#00000")) << v;
        EXPECT_EQ(Bitrate_Text(row), Format(int64_t{row}, "000")) << v;
        const Currency seconds = Currency::FromRaw(v);
        const int64_t s = seconds.Round();
        EXPECT_EQ(Duration_Text(seconds),
                  Format(s / 3600, "0#") + ":" + Format((s % 3600) / 60, "0#") + ":" + Format((s % 3600) % 60, "0#"))
            << v;
    }
    for (int64_t raw : {int64_t{0}, int64_t{49}, int64_t{50}, int64_t{-49}, int64_t{-50}, int64_t{-12'3450},
                        int64_t{1023'9950}, int64_t{1024'0000}, int64_t{99'9949}, std::numeric_limits<int64_t>::min(),
                        std::numeric_limits<int64_t>::max()}) {
        const Currency mb = Currency::FromRaw(raw);
        const std::string expected = mb < Currency(1024) ? Format(mb, "#00.00") + "Mb"
                                                         : Format(mb / Currency(1024), "#00.00") + "Gb";
        EXPECT_EQ(Size_Text(mb), expected) << raw;
    }
}

}  // namespace
}  // namespace velmora

#include <gtest/gtest.h>

#include <string>

#include "base/collection_records.h"
#include "base/record_file.h"
#include "collection/stored_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::TempFolder;
namespace r = track_record;

// A Track is read whole from its 45 records when it can be; what the reading
// makes of it must be what reading it field by field makes of it, at the
// edges of a record, of the read window and of the file.
class StoredTrackRead : public ::testing::Test {
protected:
    void Put_Track(RecordFile& f, int32_t i, const std::string& artist) {
        auto at = [i](int64_t field) { return Track_Record(i, field); };
        ASSERT_TRUE(f.PutLong(at(r::kPlayedNumber), i + 1));
        ASSERT_TRUE(f.PutCurrency(at(r::kDuration), Currency(i)));
        ASSERT_TRUE(f.PutInteger(at(r::kRatingClass), 3));
        ASSERT_TRUE(f.PutString(at(r::kArtist), artist));
        ASSERT_TRUE(f.PutString(at(r::kTrackPath), "/m/" + std::to_string(i) + ".mp3"));
        ASSERT_TRUE(f.PutBoolean(at(r::kIdentified), true));
        ASSERT_TRUE(f.PutInteger(at(r::Slot_Value(15)), -2));
        ASSERT_TRUE(f.PutString(at(r::Slot_Text(15)), "τέλος"));
    }
    std::string Path() const { return (dir.Path() / "files.qqel").string(); }

    TempFolder dir;
};

TEST_F(StoredTrackRead, WholeTracksReadAsTheirFieldsAcrossTheReadWindow) {
    // Texts that fill their record to the last byte, in one byte and in two.
    std::string greek;
    for (int k = 0; k < kFilesTextBytes; ++k) greek += "ω";
    const std::string latin(kFilesTextBytes, 'a');
    // A megabyte's window holds 58 Tracks and a part: Track 58 lies across its end.
    constexpr int32_t kTracks = 60;
    {
        RecordFile f;
        ASSERT_TRUE(f.Open(Path(), kFilesRecordLength));
        for (int32_t i = 0; i < kTracks; ++i) Put_Track(f, i, i % 2 ? greek : latin);
        ASSERT_TRUE(f.Close());
    }
    RecordFile f;
    ASSERT_TRUE(f.Open(Path(), kFilesRecordLength, RecordFile::Mode::ReadOnly));
    StoredTrack t;
    for (int32_t i = 0; i < kTracks; ++i) {
        ASSERT_TRUE(Read_Track(f, i, t)) << i << ": " << f.LastError();
        EXPECT_EQ(t.Artist, i % 2 ? greek : latin) << i;
        EXPECT_EQ(t.Track_Path, "/m/" + std::to_string(i) + ".mp3") << i;
        EXPECT_EQ(t.Played_Number, i + 1);
        EXPECT_EQ(t.Duration, Currency(i));
        EXPECT_EQ(t.Rating_Class, 3);
        EXPECT_TRUE(t.Identified);
        EXPECT_EQ(t.Slot_Value[15], -2);
        EXPECT_EQ(t.Slot_Text[15], "τέλος");
        EXPECT_EQ(t.Genre, "") << "an empty text clears what the last Track left";
    }
}

TEST_F(StoredTrackRead, ADamagedTrackFailsAtItsFirstBadRecordWithTheFileMessage) {
    {
        RecordFile f;
        ASSERT_TRUE(f.Open(Path(), kFilesRecordLength));
        Put_Track(f, 0, "A");
        Put_Track(f, 1, "B");
        ASSERT_TRUE(f.Close());
    }
    // Track 0's title claims one byte more than its record holds.
    {
        RecordFile f;
        ASSERT_TRUE(f.Open(Path(), kFilesRecordLength));
        ASSERT_TRUE(f.PutInteger(Track_Record(0, r::kTitle), kFilesTextBytes + 1));
        ASSERT_TRUE(f.Close());
    }
    RecordFile f;
    ASSERT_TRUE(f.Open(Path(), kFilesRecordLength, RecordFile::Mode::ReadOnly));
    StoredTrack t;
    t.Year = "kept";
    EXPECT_FALSE(Read_Track(f, 0, t));
    EXPECT_EQ(f.LastError(), "record 10: a text length of 399 points past its record");
    EXPECT_EQ(t.Artist, "A") << "the fields before the bad record are read";
    EXPECT_EQ(t.Year, "kept") << "those behind it keep what they held";

    // Track 1 is whole; Track 2 lies past the end of the file.
    EXPECT_TRUE(Read_Track(f, 1, t)) << f.LastError();
    EXPECT_EQ(t.Artist, "B");
    EXPECT_FALSE(Read_Track(f, 2, t));
    EXPECT_EQ(f.LastError(), "record 91: read past the end of the file");
}

// The room a load takes for the filter rows before reading them: the
// rows' bytes alone, past the boxes' items, as far as the file holds them.
TEST_F(StoredTrackRead, TheFilterRowsAreMeasuredPastTheBoxItems) {
    const std::string path = (dir.Path() / "filters.qqel").string();
    FilterCounts counts{};
    counts[0] = 2, counts[3] = 1, counts[filter_record::kValueBoxes] = 2;  // three rows
    {
        RecordFile f;
        ASSERT_TRUE(f.Open(path, kFiltersRecordLength));
        int64_t record = filter_record::kFirstItem;
        for (const char* item : {"box 0 item", "another", "box 3 item", "Ωραίο", "row", "τρίτη"})
            ASSERT_TRUE(f.PutString(record++, item));
        ASSERT_TRUE(f.Close());
    }
    RecordFile f;
    ASSERT_TRUE(f.Open(path, kFiltersRecordLength, RecordFile::Mode::ReadOnly));
    EXPECT_EQ(Filter_Rows_Length(f, counts), std::string("Ωραίο" "row" "τρίτη").size());
    counts[filter_record::kValueBoxes] = 9;  // more rows promised than the file holds
    EXPECT_EQ(Filter_Rows_Length(f, counts), std::string("Ωραίο" "row" "τρίτη").size());
}

}  // namespace
}  // namespace velmora

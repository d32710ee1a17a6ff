#include "base/record_file.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/file_size_limit.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

using testing::Holds;
using testing::TempFolder;

// The field forms are checked byte for byte by the Collection's golden test;
// here the limits: what does not fit, what is cut, what lies outside.
TEST(RecordFile, TextsMustFitTheRecordAndTheCodePage) {
    TempFolder dir;
    const auto path = dir.Path() / "texts.bin";
    RecordFile f;
    ASSERT_TRUE(f.Open(path.string(), 400));
    EXPECT_TRUE(f.PutString(1, std::string(398, 'a')));
    EXPECT_FALSE(f.PutString(2, std::string(399, 'a'))) << "399 bytes do not fit a record of 400";
    std::string greek;  // two bytes a letter in UTF-8, one in the file
    for (int k = 0; k < 398; ++k) greek += "ω";
    EXPECT_TRUE(f.PutString(3, greek));
    EXPECT_FALSE(f.PutString(4, "日本")) << "no place in code page 1253";
    EXPECT_FALSE(f.PutString(4, std::string("\xC3", 1))) << "not valid UTF-8";
    EXPECT_TRUE(f.PutByte(5, 0xAB));
    ASSERT_TRUE(f.Close());
    const std::string bytes = testing::Bytes(path);
    ASSERT_EQ(bytes.size(), 5u * 400) << "a refused text writes nothing";
    EXPECT_EQ(bytes.substr(400, 400), std::string(400, '\0'));
    EXPECT_EQ(bytes.substr(1600), "\xAB" + std::string(399, '\0'));

    ASSERT_TRUE(f.Open(path.string(), 400, RecordFile::Mode::ReadOnly));
    std::string s;
    EXPECT_TRUE(f.GetString(3, s) && s == greek);
    EXPECT_FALSE(f.PutInteger(1, 5)) << "a read-only file takes no writes";
}

TEST(RecordFile, DamagedInputIsAReadErrorNeverAnOverrun) {
    TempFolder dir;
    const auto path = dir.Path() / "bad.bin";
    // Record 1: a length that points past its record of 8 bytes.
    // Record 2: a length of 4, inside the record. Record 3: one byte, too
    // short for an Integer, enough for a Byte.
    testing::Put(path, std::string("\x07\x00" "abcdef" "\x04\x00" "ab\0\0\0\0" "\x05", 17));
    RecordFile f;
    ASSERT_TRUE(f.Open(path.string(), 8, RecordFile::Mode::ReadOnly));
    EXPECT_EQ(f.RecordCount(), 3) << "a partial last record counts";
    std::string s = "kept";
    EXPECT_FALSE(f.GetString(1, s));
    EXPECT_TRUE(Holds(f.LastError(), "past its record"));
    EXPECT_EQ(s, "kept") << "a failed read leaves the value as it was";
    EXPECT_TRUE(f.GetString(2, s) && s == std::string("ab\0\0", 4));
    int16_t i = 7;
    uint8_t b = 0;
    EXPECT_TRUE(!f.GetInteger(3, i) && i == 7);
    EXPECT_TRUE(f.GetByte(3, b) && b == 5);
    int32_t l = 0;
    for (int64_t record : {int64_t{4}, int64_t{0}, int64_t{-3}, int64_t{1} << 62})
        EXPECT_FALSE(f.GetLong(record, l)) << record;
    EXPECT_FALSE(f.Open(dir.Path().string(), 8)) << "a folder is no record file";
    EXPECT_FALSE(f.Open((dir.Path() / "absent" / "x").string(), 8));
}

// Puts and gets in any order see one file, across the read window and the
// write buffer, over several windows' worth of records.
TEST(RecordFile, BufferedWritesAndTheReadWindowAgree) {
    TempFolder dir;
    const auto path = dir.Path() / "big.bin";
    constexpr int kRecords = 9000;
    RecordFile f;
    ASSERT_TRUE(f.Open(path.string(), 400));
    for (int r = 1; r <= kRecords; ++r) ASSERT_TRUE(f.PutLong(r, r * 3));
    EXPECT_TRUE(f.PutString(5, "five"));  // long flushed to the disk
    EXPECT_TRUE(f.PutLong(kRecords - 1, -1));  // still in the buffer
    int32_t l = 0;
    std::string s;
    EXPECT_TRUE(f.GetString(5, s) && s == "five");
    EXPECT_TRUE(f.GetLong(kRecords - 1, l) && l == -1);
    EXPECT_TRUE(f.GetLong(100, l) && l == 300);
    EXPECT_TRUE(f.PutLong(101, 42));  // inside the read window now
    EXPECT_TRUE(f.GetLong(101, l) && l == 42);
    // A record behind a buffered one is a hole of zeros, not the end.
    EXPECT_TRUE(f.PutInteger(kRecords + 10, 9));
    EXPECT_TRUE(f.GetLong(kRecords + 5, l) && l == 0);
    EXPECT_EQ(f.RecordCount(), kRecords + 10);
    ASSERT_TRUE(f.Sync() && f.Close());
    EXPECT_EQ(std::filesystem::file_size(path), uint64_t{kRecords + 10} * 400);

    ASSERT_TRUE(f.Open(path.string(), 400, RecordFile::Mode::ReadOnly));
    for (int r = kRecords; r >= 1; r -= 7) {  // backwards, window by window
        if (r == 5 || r == 101 || r == kRecords - 1) continue;
        ASSERT_TRUE(f.GetLong(r, l)) << r;
        ASSERT_EQ(l, r * 3) << r;
    }
}

// A write the file system refuses (here the file size limit) is reported by
// Sync and Close, and stays reported.
TEST(RecordFile, AFailedWriteIsNeverReportedAsSaved) {
    TempFolder dir;
    RecordFile f;
    bool all_ok = true, synced = true, failed = false, closed = true;
    {
        testing::FileSizeLimit full(4096);
        ASSERT_TRUE(full.Set());
        all_ok = f.Open((dir.Path() / "limited.bin").string(), 400);
        for (int r = 1; r <= 100; ++r) all_ok &= f.PutLong(r, r);
        synced = f.Sync(), failed = f.WriteFailed(), closed = f.Close();
    }
    EXPECT_TRUE(all_ok) << "the puts went to the buffer";
    EXPECT_EQ(std::tuple(synced, failed, closed), std::tuple(false, true, false));
}

}  // namespace
}  // namespace velmora

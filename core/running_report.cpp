#include "core/running_report.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/codepage1253.h"
#include "base/file_kind.h"
#include "base/text_format.h"
#include "core/app_context.h"
#include "core/program_folders.h"

namespace fs = std::filesystem;

namespace velmora {

namespace {

constexpr int kReportsFolder = 0;

// The descriptions of the errors of the report's file number.
const char* const kAlreadyOpen = "File already open";
const char* const kBadFileMode = "Bad file mode";
const char* const kBadNumber = "Bad file name or number";
const char* const kFileNotFound = "File not found";

void Log_Error(AppContext& ctx, const std::string& description) { Log_Line(ctx, "-> " + description); }

std::string ErrnoText(int code) { return std::generic_category().message(code); }

void Set_Report_Open(AppContext& ctx, bool usable) {
    ctx.report.Report_Open = usable ? -1 : 0;
    ctx.form1.Menus("MnuMoreReportDelete").SetEnabled(usable);
}

// The report is text in code page 1253; a character the code page cannot
// carry becomes '?', as the system's own conversion of text does, so that
// one foreign file name does not cost the whole block.
std::string To_Disk(std::string_view utf8) {
    if (auto whole = Utf8ToCp1253(utf8)) return *whole;
    std::string out;
    out.reserve(utf8.size());
    size_t i = 0;
    while (i < utf8.size()) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        size_t len = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 1;
        if (i + len > utf8.size()) len = 1;
        auto one = Utf8ToCp1253(utf8.substr(i, len));
        out += one && one->size() == 1 ? *one : std::string("?");
        i += len;
    }
    return out;
}

// Open for input: a regular file that can be read.
std::FILE* Open_Input(const std::string& path) {
    std::string error;
    const int fd = Open_Regular(path, O_RDONLY, error);
    if (fd < 0) return nullptr;
    std::FILE* file = ::fdopen(fd, "rb");
    if (!file) ::close(fd);
    return file;
}

// A new report, made here and now: what already stands by its name (a pipe,
// which would hold the block until something reads it; a link) is not
// opened. Only a missing report is ever created.
std::FILE* Create_Output(const std::string& path) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) return nullptr;
    std::FILE* file = ::fdopen(fd, "wb");
    if (!file) ::close(fd);
    return file;
}

// Print #: the text and a line break to the report's number. Writing to a
// number held for reading, or to none, fails like any other write.
void Print(AppContext& ctx, std::string_view text) {
    ReportState& r = ctx.report;
    if (r.Mode == ReportState::Number::Closed) return Log_Error(ctx, kBadNumber);
    if (r.Mode == ReportState::Number::Input) return Log_Error(ctx, kBadFileMode);
    std::string bytes = To_Disk(text);
    bytes += '\n';
    if (std::fwrite(bytes.data(), 1, bytes.size(), r.File.get()) != bytes.size()) Log_Error(ctx, ErrnoText(errno));
}

void Close_Number(AppContext& ctx) {
    ReportState& r = ctx.report;
    if (r.Mode == ReportState::Number::Closed) return;
    std::FILE* file = r.File.release();
    r.Mode = ReportState::Number::Closed;
    if (std::fclose(file) != 0) Log_Error(ctx, ErrnoText(errno));
}

}  // namespace

void Log_Line(AppContext& ctx, const std::string& text) {
    TextBox& log = ctx.form1.Text2[0];
    log.Prepend(TimeText(ctx.ports.loop.Now()) + text + "\n");
}

std::string Report_File(const AppContext& ctx) { return Folder_Path(ctx, kReportsFolder) + "velmora_report.txt"; }

void Report_Size(AppContext& ctx) {
    Make_Folder(ctx, kReportsFolder);
    std::FILE* file = Open_Input(Report_File(ctx));
    if (!file) return Set_Report_Open(ctx, false);
    std::error_code ec;
    const auto bytes = fs::file_size(Report_File(ctx), ec);
    std::fclose(file);
    const double megabytes = ec ? 0.0 : static_cast<double>(bytes) / 1048576.0;
    Log_Line(ctx, "-> Μέγεθος αρχείου Αναφοράς - Reports File Size:\n ---> " + Format(megabytes, "0000.00") + "Mb");
    Set_Report_Open(ctx, true);
}

void Report_Block(AppContext& ctx, int start) {
    ReportState& r = ctx.report;
    if (start != -1) {
        Print(ctx, ctx.form1.Text2[0].Text());
        Close_Number(ctx);
        return;
    }

    Make_Folder(ctx, kReportsFolder);
    const std::string path = Report_File(ctx);
    // The open for input is the test for an existing report, and it keeps the
    // number: the open for append that follows then finds the number taken.
    // So an existing report gets no new block until it is deleted.
    std::FILE* existing = r.Mode == ReportState::Number::Closed ? Open_Input(path) : nullptr;
    if (existing) {
        r.File.reset(existing);
        r.Mode = ReportState::Number::Input;
        Log_Error(ctx, kAlreadyOpen);
        Set_Report_Open(ctx, false);
    } else if (r.Mode != ReportState::Number::Closed) {
        // A block begun inside another one, before that one closed.
        Log_Error(ctx, kAlreadyOpen);
        Set_Report_Open(ctx, false);
    } else if (std::FILE* created = Create_Output(path)) {
        r.File.reset(created);
        r.Mode = ReportState::Number::Output;
        Set_Report_Open(ctx, true);
    } else {
        const int error = errno;
        const FileKind kind = Resolve_File(path).kind;
        Log_Error(ctx, kind == FileKind::Missing || kind == FileKind::Regular
                           ? ErrnoText(error)
                           : path + ": " + Kind_Text(kind) + ", not a regular file");
        Set_Report_Open(ctx, false);
    }

    const std::string stars(100, '*');
    Print(ctx, stars);
    Print(ctx, DateText(ctx.ports.loop.Now()));
    Print(ctx, stars);
}

void Delete_Report(AppContext& ctx) {
    Make_Folder(ctx, kReportsFolder);
    // A report held by a block in progress cannot be deleted under it.
    if (ctx.report.Mode != ReportState::Number::Closed) {
        Log_Error(ctx, kAlreadyOpen);
        return Set_Report_Open(ctx, false);
    }
    std::error_code ec;
    if (!fs::remove(Report_File(ctx), ec)) {
        Log_Error(ctx, ec ? ec.message() : kFileNotFound);
        Set_Report_Open(ctx, false);
    }
}

void Wire_Report_Menus(AppContext& ctx) {
    ReportState& r = ctx.report;
    r.Menu_Links.clear();
    MenuItem& report = ctx.form1.Menus("MnuMoreReport");
    r.Menu_Links.push_back(report.Click.connect([&ctx, &report] {
        report.SetChecked(!report.Checked());
        ctx.settings.Report_On = report.Checked() ? -1 : 0;
    }));
    r.Menu_Links.push_back(ctx.form1.Menus("MnuMoreReportDelete").Click.connect([&ctx] { Delete_Report(ctx); }));
}

}  // namespace velmora

#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/Wide_win32.h"
#include "windows/Holder.h"

namespace {

// Where this program writes a report when a test starts it as "another program".
std::wstring& ReportPath() {
    static std::wstring path;
    return path;
}

// Writes the report, in UTF-16; it is there at once as a whole.
void Report(const std::wstring& report) {
    const std::wstring unfinished = ReportPath() + L".part";
    if (FILE* file = _wfopen(unfinished.c_str(), L"wb")) {
        std::fwrite(report.data(), sizeof(wchar_t), report.size(), file);
        std::fclose(file);
        MoveFileW(unfinished.c_str(), ReportPath().c_str());
    }
}

// Reports the arguments behind the report's path and the current folder, a line each.
int ReportStart(const std::vector<std::wstring>& arguments) {
    std::wstring report;
    for (std::size_t i = 3; i < arguments.size(); ++i)
        report += arguments[i] + L"\n";
    wchar_t folder[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, folder);
    Report(report + folder);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    wchar_t** const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::vector<std::wstring> arguments(texts, texts + count);
    LocalFree(texts);
    if (arguments.size() >= 3) {
        ReportPath() = arguments[2];
        if (arguments[1] == L"--report-start")
            return ReportStart(arguments);
        if (arguments[1] == L"--hold")
            tobbin::HoldForEver(tobbin::Utf8(arguments[3]), [] { Report(L"started"); });
    }
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>

namespace {

// What the tests start as "another program": writes the rest of its command line and its current
// folder, a line each in UTF-16, to the file named first.
int WriteStartFile(int count, wchar_t** arguments) {
    std::wstring report;
    for (int i = 3; i < count; ++i)
        report += std::wstring(arguments[i]) + L"\n";
    wchar_t folder[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, folder);
    report += folder;
    const std::wstring unfinished = std::wstring(arguments[2]) + L".part";
    FILE* file = _wfopen(unfinished.c_str(), L"wb");
    if (file == nullptr)
        return 1;
    std::fwrite(report.data(), sizeof(wchar_t), report.size(), file);
    std::fclose(file);
    return MoveFileW(unfinished.c_str(), arguments[2]) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (count >= 3 && std::wstring(arguments[1]) == L"--write-start-file")
        return WriteStartFile(count, arguments);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

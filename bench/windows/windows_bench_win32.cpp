// Measures the program from outside, through its windows, as scripts/bench --windows does it. Times
// are milliseconds. Each line of the answers has fields parted by tabs.
//
//   start PROGRAM [STOP-TEXT]   starts the program; prints the times until its splash window and
//                               its frame were seen and answered, and the longest gap between two
//                               answers. With a text, presses the splash's Stop as soon as its
//                               label begins so, and prints also how long the text stayed then.
//                               Last, every gap of over 150 ms: when it began and how long it was.
//   measure STEP...             does each step with the running program; prints the step, its time,
//                               the longest gap, the rows of the song list, those selected, the
//                               gaps of over 150 ms. A step is the name of a function of Actions
//                               and what it needs: select:FOLDER toggle:FOLDER/FOLDER heading
//                               key:CODE openfind find:TEXT notfound:TEXT closefind every:N
//                               allbut:N mouse command:NUMBER stop:NUMBER:MILLISECONDS
//   search ROOT...              the time of a bare listing of the drives and that of the program's
//                               own search of all hard drives, each with the songs found
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <cstdio>
#include <stdexcept>

#include "Actions_win32.h"
#include "driver/RemoteControls_win32.h"
#include "platform/Process_win32.h"
#include "platform/Wide_win32.h"
#include "Searching_win32.h"

namespace tobbin::bench {
namespace {

using Words = std::vector<std::wstring>;

Words Split(const std::wstring& text, wchar_t at) {
    Words parts(1);
    for (const wchar_t c : text)
        if (c == at)
            parts.emplace_back();
        else
            parts.back() += c;
    return parts;
}

DWORD ProcessOfFrame() {
    const HWND frame = FindWindowW(L"frmMDIForm1", nullptr);
    DWORD process = 0;
    GetWindowThreadProcessId(frame, &process);
    if (process == 0)
        throw std::runtime_error("the program does not run");
    return process;
}

std::wstring SplashText(HWND splash) {
    wchar_t text[256] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(GetDlgItem(splash, 101), WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text),
                        SMTO_NORMAL, 1'000, &length);
    return text;
}

double Stop(HWND splash, const std::wstring& text) {
    const auto shown = [&] {
        return IsWindowVisible(GetDlgItem(splash, 102)) && SplashText(splash).starts_with(text);
    };
    for (; !shown(); Sleep(5))
        if (!IsWindow(splash))
            throw std::runtime_error("the splash window never said so");
    const double begin = Now();
    PostMessageW(splash, WM_COMMAND, MAKEWPARAM(102, BN_CLICKED), 0);
    while (IsWindow(splash) && shown())
        Sleep(1);
    return Now() - begin;
}

void Start(const std::wstring& program, const std::wstring& stopText) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information = {};
    const double begin = Now();
    if (!CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &information))
        throw std::runtime_error("the program can't be started");
    Pinger pinger(information.dwProcessId);
    double splash = 0;
    double stopped = 0;
    while (true) {
        const HWND window = pinger.Window();
        wchar_t name[32] = L"";
        if (window != nullptr)
            GetClassNameW(window, name, 32);
        if (name == std::wstring(L"frmMDIForm1"))
            break;
        if (window != nullptr && splash == 0)
            splash = Now() - begin;
        if (window != nullptr && stopped == 0 && !stopText.empty())
            stopped = Stop(window, stopText);
        Sleep(5);
    }
    Actions(information.dwProcessId).WaitUntilShown();
    const double end = Now() - begin;
    const double gap = pinger.LongestGap();
    std::printf("%.0f\t%.0f\t%.0f\t%.0f\t%s\n", splash, end, gap, stopped,
                pinger.LongGaps().c_str());
}

double Do(Actions& actions, const Words& step) {
    const std::wstring& what = step[0];
    const std::wstring word = step.size() > 1 ? step[1] : L"";
    const auto number = [&](std::size_t i) { return std::stoi(step.at(i)); };
    if (what == L"select")
        return actions.SelectFolder(Split(word, L'/'));
    if (what == L"toggle")
        return actions.ToggleFolder(Split(word, L'/'));
    if (what == L"heading")
        return actions.ClickHeading();
    if (what == L"key")
        return actions.PressKey(static_cast<WPARAM>(number(1)));
    if (what == L"openfind")
        return actions.OpenFind();
    if (what == L"find")
        return actions.Find(word);
    if (what == L"notfound")
        return actions.FindInVain(word);
    if (what == L"mouse")
        return actions.SelectAllByMouse();
    if (what == L"command")
        return actions.Command(number(1));
    if (what == L"stop")
        return actions.StopCommand(number(1), number(2));
    if (what == L"closefind")
        actions.CloseFind();
    else if (what == L"every")
        actions.SelectEvery(number(1), false);
    else if (what == L"allbut")
        actions.SelectEvery(number(1), true);
    else
        throw std::runtime_error("no such step: " + Utf8(what));
    return 0;
}

void Measure(const Words& steps) {
    const DWORD process = ProcessOfFrame();
    Actions actions(process);
    Pinger pinger(process);
    for (const std::wstring& step : steps) {
        pinger.Restart();
        const double time = Do(actions, Split(step, L':'));
        const double gap = pinger.LongestGap();
        std::printf("%s\t%.0f\t%.0f\t%d\t%d\t%s\n", Utf8(step).c_str(), time, gap,
                    actions.RowCount(), actions.SelectedCount(), pinger.LongGaps().c_str());
        std::fflush(stdout);
    }
}

void Search(const Words& roots) {
    PrepareProcess();
    for (const bool bare : {true, false}) {
        int songs = 0;
        const double time = bare ? ListBare(roots, songs) : SearchAsTheProgram(songs);
        std::printf("%.0f\t%d\n", time, songs);
    }
}

void Run(const Words& words) {
    const Words rest(words.begin() + 1, words.end());
    if (words[0] == L"start" && !rest.empty())
        Start(rest[0], rest.size() > 1 ? rest[1] : L"");
    else if (words[0] == L"measure")
        Measure(rest);
    else if (words[0] == L"search")
        Search(rest);
    else
        throw std::runtime_error("not a command: " + Utf8(words[0]));
}

}  // namespace
}  // namespace tobbin::bench

int main() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const tobbin::bench::Words words(arguments + 1, arguments + count);
    try {
        if (words.empty())
            throw std::runtime_error("name a command");
        tobbin::bench::Run(words);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "windows_bench: %s\n", error.what());
        return 1;
    }
}

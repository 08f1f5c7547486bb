#include "windows/Saver.h"

#include <windows.h>

#include "platform/Disk_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr std::size_t kGroup = 8;  // bytes; each holds the number

}  // namespace

std::string NthContent(int n, std::size_t bytes) {
    std::string group = std::to_string(n);
    group.insert(0, kGroup - group.size(), '0');
    std::string content;
    content.reserve(bytes);
    while (content.size() < bytes)
        content += group;
    return content;
}

bool IsWholeContent(std::string_view content, std::size_t bytes) {
    if (content.size() != bytes)
        return false;
    for (std::size_t at = kGroup; at < bytes; at += kGroup)
        if (content.substr(at, kGroup) != content.substr(0, kGroup))
            return false;
    return true;
}

void SaveForEver(const std::string& path, std::size_t bytes, Manner manner, void (*started)()) {
    SystemDisk disk;
    for (int n = 1;; ++n) {
        const std::string content = NthContent(n, bytes);
        if (manner == Manner::Careful) {
            if (!SaveWholeFile(disk, path, content).Ok())
                ExitProcess(1);
        } else {
            std::unique_ptr<File> file;
            if (!disk.Open(path, OpenMode::Create, file).Ok())
                ExitProcess(1);
            for (std::size_t at = 0; at < bytes; at += 4096)  // as buffered output does
                if (!file->Write(at, std::string_view(content).substr(at, 4096)).Ok())
                    ExitProcess(1);
        }
        if (n == 1)
            started();
    }
}

void HoldForEver(const std::string& path, void (*started)()) {
    bool told = false;
    for (;;) {
        UniqueFile held(
            CreateFileW(Wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        if (!held)
            continue;
        if (!told)
            started();
        told = true;
        Sleep(60);
        held.Reset();
        Sleep(20);
    }
}

}  // namespace tobbin

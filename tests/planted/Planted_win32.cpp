// Lies under the name of one of the system's DLLs where a program could take it for that: leaves a
// file <its own path>.ran when it is loaded.
#include <windows.h>

#include <string>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* /*reserved*/) {
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(library, path, MAX_PATH);
    const HANDLE file = CreateFileW((std::wstring(path) + L".ran").c_str(), GENERIC_WRITE, 0,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    CloseHandle(file);
    return TRUE;
}

#include "platform/AccessibleNames_win32.h"

#include <oleacc.h>

#include "platform/ComPtr_win32.h"

namespace tobbin {
namespace {

constexpr GUID kServices = {
    0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID kServicesInterface = {
    0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr GUID kNameProperty = {
    0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};

ComPtr<IAccPropServices> MaybeServices() {
    void* services = nullptr;
    if (FAILED(CoCreateInstance(kServices, nullptr, CLSCTX_INPROC_SERVER, kServicesInterface,
                                &services)))
        return nullptr;
    return ComPtr<IAccPropServices>(static_cast<IAccPropServices*>(services));
}

}  // namespace

void NameWindow(HWND window, const wchar_t* name) {
    if (const auto services = MaybeServices(); services != nullptr)
        services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                 kNameProperty, name);
}

void NameMenuItem(HMENU menu, int place, const wchar_t* name) {
    if (const auto services = MaybeServices(); services != nullptr)
        services->SetHmenuPropStr(menu, static_cast<DWORD>(place + 1), kNameProperty, name);
}

void ForgetMenuItemName(HMENU menu, int place) {
    if (const auto services = MaybeServices(); services != nullptr)
        services->ClearHmenuProps(menu, static_cast<DWORD>(place + 1), &kNameProperty, 1);
}

}  // namespace tobbin

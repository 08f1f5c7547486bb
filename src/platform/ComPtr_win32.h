#pragma once

#include <windows.h>

#include <ole2.h>

#include <memory>

namespace tobbin {

struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};

// Owns one reference to a COM object.
template <typename Interface>
using ComPtr = std::unique_ptr<Interface, ComRelease>;

// Makes a COM object of a class within the process; null when there is none.
template <typename Interface>
ComPtr<Interface> MaybeCreate(const CLSID& classId) {
    void* object = nullptr;
    if (FAILED(
            CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), &object)))
        return nullptr;
    return ComPtr<Interface>(static_cast<Interface*>(object));
}

// Text that COM allocated.
struct ComTextFree {
    void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};
using ComText = std::unique_ptr<wchar_t, ComTextFree>;

// COM on this thread, as long as the object lives.
class ComApartment {
 public:
    explicit ComApartment(COINIT kind = COINIT_APARTMENTTHREADED)
        : m_begun(SUCCEEDED(CoInitializeEx(nullptr, kind))) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (m_begun)
            CoUninitialize();
    }

 private:
    bool m_begun;
};

// COM on the thread of the windows, with what drag and drop needs.
class OleApartment {
 public:
    OleApartment() : m_begun(SUCCEEDED(OleInitialize(nullptr))) {}
    OleApartment(const OleApartment&) = delete;
    OleApartment& operator=(const OleApartment&) = delete;
    ~OleApartment() {
        if (m_begun)
            OleUninitialize();
    }

 private:
    bool m_begun;
};

}  // namespace tobbin

#pragma once

#include <windows.h>

#include <commctrl.h>

#include <utility>

namespace tobbin {

// Owns one handle of a kind. The traits name the handle's type, the value that means "none" and
// what gives a handle back.
template <typename Traits>
class UniqueHandle {
 public:
    using Type = typename Traits::Type;

    UniqueHandle() = default;
    explicit UniqueHandle(Type handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Type Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Traits::None(); }

    Type Release() { return std::exchange(m_handle, Traits::None()); }
    void Reset(Type handle = Traits::None()) {
        if (const Type old = std::exchange(m_handle, handle); old != Traits::None())
            Traits::Close(old);
    }

 private:
    Type m_handle = Traits::None();
};

// The traits of a handle whose "none" is null.
template <typename Handle, auto CloseFunction>
struct NullHandleTraits {
    using Type = Handle;
    static Type None() { return nullptr; }
    static void Close(Type handle) { CloseFunction(handle); }
};

// The traits of what CreateFileW and FindFirstFileW return.
template <auto CloseFunction>
struct FileHandleTraits {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { CloseFunction(handle); }
};

using UniqueFile = UniqueHandle<FileHandleTraits<&::CloseHandle>>;
using UniqueFind = UniqueHandle<FileHandleTraits<&::FindClose>>;
using UniqueKernelObject = UniqueHandle<NullHandleTraits<HANDLE, &::CloseHandle>>;
using UniqueLibrary = UniqueHandle<NullHandleTraits<HMODULE, &::FreeLibrary>>;

using UniqueIcon = UniqueHandle<NullHandleTraits<HICON, &::DestroyIcon>>;
using UniqueMenu = UniqueHandle<NullHandleTraits<HMENU, &::DestroyMenu>>;
using UniqueAccelerators = UniqueHandle<NullHandleTraits<HACCEL, &::DestroyAcceleratorTable>>;
using UniqueImageList = UniqueHandle<NullHandleTraits<HIMAGELIST, &::ImageList_Destroy>>;

using UniqueFont = UniqueHandle<NullHandleTraits<HFONT, &::DeleteObject>>;
using UniqueBitmap = UniqueHandle<NullHandleTraits<HBITMAP, &::DeleteObject>>;
using UniqueMemoryDc = UniqueHandle<NullHandleTraits<HDC, &::DeleteDC>>;

// Runs a function when the scope is left.
template <typename Function>
class ScopeGuard {
 public:
    explicit ScopeGuard(Function function) : m_function(std::move(function)) {}
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;
    ~ScopeGuard() { m_function(); }

 private:
    Function m_function;
};

}  // namespace tobbin

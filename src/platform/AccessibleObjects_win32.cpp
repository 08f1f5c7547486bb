#include "platform/AccessibleObjects_win32.h"

namespace tobbin {
namespace {

template <typename Function>
Function* MaybeFunction(const char* name) {
    static const HMODULE library =
        LoadLibraryExW(L"oleacc.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library == nullptr ? nullptr
                              : reinterpret_cast<Function*>(
                                    reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

HRESULT StandardAccessibleObject(HWND window, LONG part, IAccessible** object) {
    static auto* const create =
        MaybeFunction<decltype(CreateStdAccessibleObject)>("CreateStdAccessibleObject");
    *object = nullptr;
    return create == nullptr
               ? E_NOTIMPL
               : create(window, part, IID_IAccessible, reinterpret_cast<void**>(object));
}

LRESULT AnswerWithObject(WPARAM wParam, IUnknown* object) {
    static auto* const answer = MaybeFunction<decltype(LresultFromObject)>("LresultFromObject");
    return answer == nullptr ? E_NOTIMPL : answer(IID_IAccessible, wParam, object);
}

}  // namespace tobbin

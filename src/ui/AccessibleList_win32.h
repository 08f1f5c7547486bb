#pragma once

#include <windows.h>

#include <oleacc.h>

#include <functional>
#include <string>

#include "platform/ComPtr_win32.h"

namespace tobbin {

// What a list control says to screen readers: each row by the text given here, which tells of the
// row's picture, too; while there is none, why. Everything else is the system's own object's.
class AccessibleList : public IAccessible {
 public:
    struct Texts {
        std::function<std::size_t()> rowCount;
        std::function<std::string(std::size_t row)> row;  // rows from 0
        std::function<std::string()> empty;
    };

    // Null when the system has no object for the list.
    static ComPtr<AccessibleList> Make(HWND list, const std::wstring& name, Texts texts);

    // The list is gone; whoever still holds the object gets errors.
    void Forget() { m_texts = {}; }

    HRESULT WINAPI QueryInterface(REFIID id, void** object) override;
    ULONG WINAPI AddRef() override { return ++m_references; }
    ULONG WINAPI Release() override;

    HRESULT WINAPI get_accName(VARIANT child, BSTR* name) override;
    HRESULT WINAPI get_accDescription(VARIANT child, BSTR* text) override;
    HRESULT WINAPI get_accChildCount(LONG* count) override;

    HRESULT WINAPI GetTypeInfoCount(UINT* count) override;
    HRESULT WINAPI GetTypeInfo(UINT number, LCID locale, ITypeInfo** info) override;
    HRESULT WINAPI GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                 DISPID* ids) override;
    HRESULT WINAPI Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                          VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;
    HRESULT WINAPI get_accParent(IDispatch** parent) override;
    HRESULT WINAPI get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT WINAPI get_accValue(VARIANT child, BSTR* value) override;
    HRESULT WINAPI get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT WINAPI get_accState(VARIANT child, VARIANT* state) override;
    HRESULT WINAPI get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT WINAPI get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
    HRESULT WINAPI get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT WINAPI get_accFocus(VARIANT* child) override;
    HRESULT WINAPI get_accSelection(VARIANT* children) override;
    HRESULT WINAPI get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT WINAPI accSelect(LONG flags, VARIANT child) override;
    HRESULT WINAPI accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                               VARIANT child) override;
    HRESULT WINAPI accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    HRESULT WINAPI accHitTest(LONG left, LONG top, VARIANT* child) override;
    HRESULT WINAPI accDoDefaultAction(VARIANT child) override;
    HRESULT WINAPI put_accName(VARIANT child, BSTR name) override;
    HRESULT WINAPI put_accValue(VARIANT child, BSTR value) override;

 private:
    AccessibleList(ComPtr<IAccessible> system, std::wstring name, Texts texts);
    virtual ~AccessibleList() = default;
    std::size_t RowCount() const { return m_texts.rowCount ? m_texts.rowCount() : 0; }

    ULONG m_references = 1;
    ComPtr<IAccessible> m_system;
    std::wstring m_name;
    Texts m_texts;
};

}  // namespace tobbin

#include "ui/AccessibleList_win32.h"

#include <utility>

#include "platform/AccessibleObjects_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

HRESULT Give(const std::wstring& text, BSTR* result) {
    *result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

bool IsSelf(const VARIANT& child) {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

}  // namespace

AccessibleList::AccessibleList(ComPtr<IAccessible> system, std::wstring name, Texts texts)
    : m_system(std::move(system)), m_name(std::move(name)), m_texts(std::move(texts)) {}

ComPtr<AccessibleList> AccessibleList::Make(HWND list, const std::wstring& name, Texts texts) {
    IAccessible* system = nullptr;
    if (FAILED(StandardAccessibleObject(list, OBJID_CLIENT, &system)) || system == nullptr)
        return nullptr;
    return ComPtr<AccessibleList>(
        new AccessibleList(ComPtr<IAccessible>(system), name, std::move(texts)));
}

HRESULT AccessibleList::QueryInterface(REFIID id, void** object) {
    if (id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible) {
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    if (id == IID_IEnumVARIANT || id == IID_IOleWindow)
        return m_system->QueryInterface(id, object);
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG AccessibleList::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT AccessibleList::get_accName(VARIANT child, BSTR* name) {
    if (IsSelf(child))
        return Give(m_name, name);
    if (child.vt != VT_I4 || child.lVal < 1 || static_cast<std::size_t>(child.lVal) > RowCount())
        return m_system->get_accName(child, name);
    return Give(WideShown(m_texts.row(static_cast<std::size_t>(child.lVal - 1))), name);
}

HRESULT AccessibleList::get_accDescription(VARIANT child, BSTR* text) {
    if (IsSelf(child) && m_texts.empty && RowCount() == 0)
        return Give(Wide(m_texts.empty()), text);
    return m_system->get_accDescription(child, text);
}

HRESULT AccessibleList::get_accChildCount(LONG* count) {
    *count = static_cast<LONG>(RowCount());
    return S_OK;
}

// The rest is the system's.

HRESULT AccessibleList::GetTypeInfoCount(UINT* count) {
    return m_system->GetTypeInfoCount(count);
}

HRESULT AccessibleList::GetTypeInfo(UINT number, LCID locale, ITypeInfo** info) {
    return m_system->GetTypeInfo(number, locale, info);
}

HRESULT AccessibleList::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                      DISPID* ids) {
    return m_system->GetIDsOfNames(id, names, count, locale, ids);
}

HRESULT AccessibleList::Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                               DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                               UINT* wrong) {
    return m_system->Invoke(member, id, locale, flags, parameters, result, exception, wrong);
}

HRESULT AccessibleList::get_accParent(IDispatch** parent) {
    return m_system->get_accParent(parent);
}

HRESULT AccessibleList::get_accChild(VARIANT child, IDispatch** object) {
    return m_system->get_accChild(child, object);
}

HRESULT AccessibleList::get_accValue(VARIANT child, BSTR* value) {
    return m_system->get_accValue(child, value);
}

HRESULT AccessibleList::get_accRole(VARIANT child, VARIANT* role) {
    return m_system->get_accRole(child, role);
}

HRESULT AccessibleList::get_accState(VARIANT child, VARIANT* state) {
    return m_system->get_accState(child, state);
}

HRESULT AccessibleList::get_accHelp(VARIANT child, BSTR* help) {
    return m_system->get_accHelp(child, help);
}

HRESULT AccessibleList::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
    return m_system->get_accHelpTopic(file, child, topic);
}

HRESULT AccessibleList::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    return m_system->get_accKeyboardShortcut(child, shortcut);
}

HRESULT AccessibleList::get_accFocus(VARIANT* child) {
    return m_system->get_accFocus(child);
}

HRESULT AccessibleList::get_accSelection(VARIANT* children) {
    return m_system->get_accSelection(children);
}

HRESULT AccessibleList::get_accDefaultAction(VARIANT child, BSTR* action) {
    return m_system->get_accDefaultAction(child, action);
}

HRESULT AccessibleList::accSelect(LONG flags, VARIANT child) {
    return m_system->accSelect(flags, child);
}

HRESULT AccessibleList::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                    VARIANT child) {
    return m_system->accLocation(left, top, width, height, child);
}

HRESULT AccessibleList::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    return m_system->accNavigate(direction, start, end);
}

HRESULT AccessibleList::accHitTest(LONG left, LONG top, VARIANT* child) {
    return m_system->accHitTest(left, top, child);
}

HRESULT AccessibleList::accDoDefaultAction(VARIANT child) {
    return m_system->accDoDefaultAction(child);
}

HRESULT AccessibleList::put_accName(VARIANT child, BSTR name) {
    return m_system->put_accName(child, name);
}

HRESULT AccessibleList::put_accValue(VARIANT child, BSTR value) {
    return m_system->put_accValue(child, value);
}

}  // namespace tobbin

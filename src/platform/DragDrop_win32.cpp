#include "platform/DragDrop_win32.h"

#include <shlobj.h>

#include <atomic>
#include <cstdint>
#include <cstring>

#include "platform/Wide_win32.h"
#include "platform/WindowBase_win32.h"

namespace tobbin {
namespace {

// How a drag of the program's own is told from all others: by its data's format and process.
struct OwnMark {
    DWORD process = 0;
    void* own = nullptr;
};

FORMATETC FormatOf(UINT clipboardFormat) {
    return {static_cast<CLIPFORMAT>(clipboardFormat), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

UINT OwnFormat() {
    return RegisterClipboardFormatW(L"Tobbin dragged");
}

// The memory of one format of the data; nothing to free when it has none.
class DataMemory {
 public:
    DataMemory(IDataObject& data, UINT clipboardFormat) {
        FORMATETC format = FormatOf(clipboardFormat);
        if (data.GetData(&format, &m_medium) != S_OK)
            m_medium.tymed = TYMED_NULL;
    }
    ~DataMemory() {
        if (m_medium.tymed != TYMED_NULL)
            ReleaseStgMedium(&m_medium);
    }
    DataMemory(const DataMemory&) = delete;
    DataMemory& operator=(const DataMemory&) = delete;

    HGLOBAL Get() const { return m_medium.tymed == TYMED_HGLOBAL ? m_medium.hGlobal : nullptr; }

 private:
    STGMEDIUM m_medium = {};
};

void* MaybeOwn(IDataObject& data) {
    const DataMemory memory(data, OwnFormat());
    OwnMark mark;
    if (memory.Get() == nullptr || GlobalSize(memory.Get()) < sizeof(mark))
        return nullptr;
    std::memcpy(&mark, GlobalLock(memory.Get()), sizeof(mark));
    GlobalUnlock(memory.Get());
    return mark.process == GetCurrentProcessId() ? mark.own : nullptr;
}

// COM's counting of references for an object with one interface.
template <typename Interface>
class ComObject : public Interface {
 public:
    virtual ~ComObject() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, __uuidof(Interface));
        *object = known ? static_cast<Interface*>(this) : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

 private:
    std::atomic<ULONG> m_references = 1;
};

class OwnData : public ComObject<IDataObject> {
 public:
    explicit OwnData(void* own) : m_mark{GetCurrentProcessId(), own} {}

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (QueryGetData(format) != S_OK)
            return DV_E_FORMATETC;
        *medium = {};
        medium->hGlobal = GlobalAlloc(GMEM_MOVEABLE, sizeof(m_mark));
        if (medium->hGlobal == nullptr)
            return E_OUTOFMEMORY;
        medium->tymed = TYMED_HGLOBAL;
        std::memcpy(GlobalLock(medium->hGlobal), &m_mark, sizeof(m_mark));
        GlobalUnlock(medium->hGlobal);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return format->cfFormat == OwnFormat() && (format->tymed & TYMED_HGLOBAL) != 0
                   ? S_OK
                   : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override {
        const FORMATETC format = FormatOf(OwnFormat());
        *formats = nullptr;
        return direction == DATADIR_GET ? SHCreateStdEnumFmtEtc(1, &format, formats) : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override {
        out->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

 private:
    OwnMark m_mark;
};

// Ends the drag when the left button is up again; Esc or another button gives it up.
class DragSource : public ComObject<IDropSource> {
 public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape || (keys & (MK_RBUTTON | MK_MBUTTON)) != 0)
            return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

DropEffect EffectOf(DWORD effects) {
    return (effects & DROPEFFECT_MOVE) != 0   ? DropEffect::Move
           : (effects & DROPEFFECT_COPY) != 0 ? DropEffect::Copy
                                              : DropEffect::None;
}

// As far as the source allows it. One that only offers links gets told of a link instead of a copy.
DWORD SystemEffect(DropEffect effect, DWORD allowed) {
    if (effect == DropEffect::Move)
        return allowed & DROPEFFECT_MOVE;
    if (effect == DropEffect::Copy)
        return (allowed & DROPEFFECT_COPY) != 0 ? DROPEFFECT_COPY : allowed & DROPEFFECT_LINK;
    return DROPEFFECT_NONE;
}

std::vector<std::string> FilesOf(HDROP drop) {
    std::vector<std::string> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    paths.reserve(count);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(Utf8(path));
    }
    return paths;
}

}  // namespace

std::vector<std::string> TakeDroppedFiles(HDROP drop) {
    std::vector<std::string> paths = FilesOf(drop);
    DragFinish(drop);
    return paths;
}

// The system's side of a DropTarget.
class DropTargetObject : public ComObject<IDropTarget> {
 public:
    explicit DropTargetObject(DropTargetDelegate& delegate) : m_delegate(&delegate) {}
    void Forget() { m_delegate = nullptr; }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL at,
                                        DWORD* effect) override {
        return GuardedHandler([&] {
            m_data = {};
            m_data.maybeOwn = MaybeOwn(*data);
            const DataMemory files(*data, CF_HDROP);
            if (m_data.maybeOwn == nullptr && files.Get() != nullptr)
                m_data.files = FilesOf(static_cast<HDROP>(files.Get()));
            return DragOver(keys, at, effect);
        });
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) override {
        return GuardedHandler([&] {
            *effect = SystemEffect(Ask(&DropTargetDelegate::OnDragOver, keys, at), *effect);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE DragLeave() override {
        return GuardedHandler([&] {
            m_data = {};
            if (m_delegate != nullptr)
                m_delegate->OnDragLeave();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject*, DWORD keys, POINTL at, DWORD* effect) override {
        return GuardedHandler([&] {
            *effect = SystemEffect(Ask(&DropTargetDelegate::OnDrop, keys, at), *effect);
            m_data = {};
            return S_OK;
        });
    }

 private:
    DropEffect Ask(DropEffect (DropTargetDelegate::*question)(const DraggedData&, POINT, bool),
                   DWORD keys, POINTL at) {
        if (m_delegate == nullptr || (m_data.maybeOwn == nullptr && m_data.files.empty()))
            return DropEffect::None;
        return (m_delegate->*question)(m_data, POINT{at.x, at.y}, (keys & MK_CONTROL) != 0);
    }

    DropTargetDelegate* m_delegate;
    DraggedData m_data;
};

DropTarget::DropTarget(DropTargetDelegate& delegate) : m_delegate(delegate) {}

DropTarget::~DropTarget() {
    Stop();
}

bool DropTarget::Begin(HWND window) {
    m_object.reset(new DropTargetObject(m_delegate));
    m_window = SUCCEEDED(RegisterDragDrop(window, m_object.get())) ? window : nullptr;
    return m_window != nullptr;
}

void DropTarget::Stop() {
    if (m_window != nullptr)
        RevokeDragDrop(m_window);
    m_window = nullptr;
    if (m_object)
        m_object->Forget();
    m_object.reset();
}

DropEffect RunDrag(void* own) {
    const ComPtr<IDataObject> data(new OwnData(own));
    const ComPtr<IDropSource> source(new DragSource);
    DWORD effect = DROPEFFECT_NONE;
    const HRESULT end =
        DoDragDrop(data.get(), source.get(), DROPEFFECT_MOVE | DROPEFFECT_COPY, &effect);
    return end == DRAGDROP_S_DROP ? EffectOf(effect) : DropEffect::None;
}

}  // namespace tobbin

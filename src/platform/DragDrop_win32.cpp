#include "platform/DragDrop_win32.h"

#include <utility>

#include "platform/WindowBase_win32.h"

namespace tobbin {
namespace {

// Ends the drag when the left button is up again; Esc or another button gives it up.
class DragSource : public ComObject<IDropSource> {
 public:
    explicit DragSource(const OwnDrag& drag) : m_drag(drag) {}

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape || (keys & (MK_RBUTTON | MK_MBUTTON)) != 0)
            return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) override {
        if (effect == DROPEFFECT_NONE || m_drag.effect != DropEffect::Move)
            return DRAGDROP_S_USEDEFAULTCURSORS;
        // To the system all is a copy (see RunDrag): its cursor for a move is ours to show.
        constexpr WORD kMove = 2;
        const HCURSOR move = LoadCursorW(GetModuleHandleW(L"ole32.dll"), MAKEINTRESOURCEW(kMove));
        SetCursor(move != nullptr ? move : LoadCursorW(nullptr, IDC_ARROW));
        return S_OK;
    }

 private:
    const OwnDrag& m_drag;
};

// As far as the source allows it. A source of the program's own allows a copy only and hears of a
// move by itself. One that only offers links gets told of a link instead of a copy.
DWORD SystemEffect(DropEffect effect, DWORD allowed) {
    if (effect == DropEffect::None)
        return DROPEFFECT_NONE;
    return (allowed & DROPEFFECT_COPY) != 0 ? DROPEFFECT_COPY : allowed & DROPEFFECT_LINK;
}

}  // namespace

// The system's side of a DropTarget.
class DropTargetObject : public ComObject<IDropTarget> {
 public:
    explicit DropTargetObject(DropTargetDelegate& delegate) : m_delegate(&delegate) {}
    void Forget() { m_delegate = nullptr; }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL at,
                                        DWORD* effect) override {
        return GuardedHandler([&] {
            m_data = {};
            m_ownDrag = MaybeOwnDrag(*data);
            if (m_ownDrag != nullptr)
                m_data.maybeOwn = m_ownDrag->what;
            else
                m_data.files = FilesIn(*data);
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
            TellSource(DropEffect::None);
            m_ownDrag = nullptr;
            if (m_delegate != nullptr)
                m_delegate->OnDragLeave();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject*, DWORD keys, POINTL at, DWORD* effect) override {
        return GuardedHandler([&] {
            *effect = SystemEffect(Ask(&DropTargetDelegate::OnDrop, keys, at), *effect);
            m_data = {};
            m_ownDrag = nullptr;
            return S_OK;
        });
    }

 private:
    DropEffect Ask(DropEffect (DropTargetDelegate::*question)(const DraggedData&, POINT,
                                                              DropEffect),
                   DWORD keys, POINTL at) {
        if (m_delegate == nullptr || (m_data.maybeOwn == nullptr && m_data.files.empty()))
            return DropEffect::None;
        const DropEffect wish = (keys & MK_CONTROL) != 0 ? DropEffect::Copy
                                : (keys & MK_SHIFT) != 0 ? DropEffect::Move
                                                         : DropEffect::None;
        const DropEffect effect = (m_delegate->*question)(m_data, POINT{at.x, at.y}, wish);
        TellSource(effect);
        return effect;
    }
    void TellSource(DropEffect effect) {
        if (m_ownDrag != nullptr)
            m_ownDrag->effect = effect;
    }

    DropTargetDelegate* m_delegate;
    DraggedData m_data;
    OwnDrag* m_ownDrag = nullptr;  // while the program's own is dragged over the window
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

// The system lets the source allow what any target may do. A file manager that may move would take
// the songs out of their folders, so a copy is all that is allowed.
void RunDrag(void* own, std::function<std::vector<std::string>()> files) {
    OwnDrag drag{own};
    auto* const data = new DragData(drag, std::move(files));
    const ComPtr<IDataObject> owned(data);
    const ComPtr<IDropSource> source(new DragSource(drag));
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(owned.get(), source.get(), DROPEFFECT_COPY, &effect);
    data->EndDrag();
}

}  // namespace tobbin

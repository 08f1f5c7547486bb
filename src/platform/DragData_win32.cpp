#include "platform/DragData_win32.h"

#include <shlobj.h>

#include <cstring>
#include <utility>

#include "platform/FileDrop_win32.h"
#include "platform/WindowBase_win32.h"

namespace tobbin {
namespace {

// How a drag of the program's own is told from all others: by its data's format and process.
struct OwnMark {
    DWORD process = 0;
    OwnDrag* drag = nullptr;
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

// The one drag of the program's own that runs, if any. A thread drags one thing at a time.
OwnDrag*& RunningDrag() {
    thread_local OwnDrag* drag = nullptr;
    return drag;
}

}  // namespace

OwnDrag* MaybeOwnDrag(IDataObject& data) {
    const DataMemory memory(data, OwnFormat());
    OwnMark mark;
    if (memory.Get() == nullptr || GlobalSize(memory.Get()) < sizeof(mark))
        return nullptr;
    std::memcpy(&mark, GlobalLock(memory.Get()), sizeof(mark));
    GlobalUnlock(memory.Get());
    // Any program can offer such data: what it holds is compared, and never an address to go to.
    return mark.process == GetCurrentProcessId() && mark.drag == RunningDrag() ? RunningDrag()
                                                                               : nullptr;
}

std::vector<std::string> FilesIn(IDataObject& data) {
    const DataMemory files(data, CF_HDROP);
    return files.Get() != nullptr ? FilesOf(static_cast<HDROP>(files.Get()))
                                  : std::vector<std::string>();
}

DragData::DragData(OwnDrag& drag, std::function<std::vector<std::string>()> files)
    : m_drag(&drag), m_askForFiles(std::move(files)) {
    RunningDrag() = &drag;
}

void DragData::EndDrag() {
    RunningDrag() = nullptr;
    m_drag = nullptr;
    m_askForFiles = nullptr;
}

HGLOBAL DragData::MaybeMemory(CLIPFORMAT format) {
    if (format != CF_HDROP) {
        const OwnMark mark = {GetCurrentProcessId(), m_drag};
        return m_drag != nullptr ? MakeMemory(&mark, sizeof(mark)) : nullptr;
    }
    AskForFiles();
    return m_files.empty() ? nullptr : MakeFileDrop(m_files);
}

void DragData::AskForFiles() {
    if (m_askForFiles)
        m_files = std::exchange(m_askForFiles, nullptr)();
}

HRESULT DragData::GetData(FORMATETC* format, STGMEDIUM* medium) {
    return GuardedHandler([&]() -> HRESULT {
        if (QueryGetData(format) != S_OK)
            return DV_E_FORMATETC;
        *medium = {};
        medium->hGlobal = MaybeMemory(format->cfFormat);
        if (medium->hGlobal == nullptr)
            return DV_E_FORMATETC;
        medium->tymed = TYMED_HGLOBAL;
        return S_OK;
    });
}

HRESULT DragData::QueryGetData(FORMATETC* format) {
    const bool known = format->cfFormat == OwnFormat() || format->cfFormat == CF_HDROP;
    return known && (format->tymed & TYMED_HGLOBAL) != 0 ? S_OK : DV_E_FORMATETC;
}

HRESULT DragData::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
    const FORMATETC offered[] = {FormatOf(OwnFormat()), FormatOf(CF_HDROP)};
    *formats = nullptr;
    return direction == DATADIR_GET ? SHCreateStdEnumFmtEtc(2, offered, formats) : E_NOTIMPL;
}

HRESULT DragData::GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) {
    out->ptd = nullptr;
    return E_NOTIMPL;
}

HRESULT DragData::GetAsyncMode(WINBOOL* isAsync) {
    *isAsync = TRUE;
    return S_OK;
}

// The files may be fetched when the drag has long ended.
HRESULT DragData::StartOperation(IBindCtx*) {
    m_inOperation = true;
    return GuardedHandler([&]() -> HRESULT {
        AskForFiles();
        return S_OK;
    });
}

HRESULT DragData::InOperation(WINBOOL* inOperation) {
    *inOperation = m_inOperation;
    return S_OK;
}

HRESULT DragData::EndOperation(HRESULT, IBindCtx*, DWORD) {
    m_inOperation = false;
    return S_OK;
}

}  // namespace tobbin

#pragma once

#include <windows.h>

#include <shldisp.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/ComObject_win32.h"

namespace tobbin {

enum class DropEffect { None, Move, Copy };

// A drag out of one of the program's windows, as its source and its target share it.
struct OwnDrag {
    void* what = nullptr;
    DropEffect effect = DropEffect::None;  // of a drop where the mouse is, on a window of ours
};

// The drag of the program's own that this data belongs to; null for that of another program.
OwnDrag* MaybeOwnDrag(IDataObject& data);

// The files that the data offers, by their full paths.
std::vector<std::string> FilesIn(IDataObject& data);

// What a drag of the program's own offers: itself, to the program's windows, and files, to others.
// These may take the files after the drag has ended.
class DragData : public ComObject<IDataObject, IDataObjectAsyncCapability> {
 public:
    // `files` names the files by their full paths; asked once at most.
    DragData(OwnDrag& drag, std::function<std::vector<std::string>()> files);

    // The drag has ended: nothing is asked any more, and only files that were asked for are left.
    void EndDrag();

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

    // So that a file manager copies in its own time, while the windows of the program go on.
    HRESULT STDMETHODCALLTYPE SetAsyncMode(WINBOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetAsyncMode(WINBOOL* isAsync) override;
    HRESULT STDMETHODCALLTYPE StartOperation(IBindCtx*) override;
    HRESULT STDMETHODCALLTYPE InOperation(WINBOOL* inOperation) override;
    HRESULT STDMETHODCALLTYPE EndOperation(HRESULT, IBindCtx*, DWORD) override;

 private:
    HGLOBAL MaybeMemory(CLIPFORMAT format);
    void AskForFiles();

    OwnDrag* m_drag;
    std::function<std::vector<std::string>()> m_askForFiles;
    std::vector<std::string> m_files;
    bool m_inOperation = false;
};

}  // namespace tobbin

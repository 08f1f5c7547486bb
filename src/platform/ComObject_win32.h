#pragma once

#include <windows.h>

#include <ole2.h>

#include <atomic>

namespace tobbin {

// COM's counting of references and its question for interfaces, for an object that offers these.
template <typename First, typename... Others>
class ComObject : public First, public Others... {
 public:
    virtual ~ComObject() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = IsEqualIID(id, IID_IUnknown) ? static_cast<First*>(this) : nullptr;
        Offer<First>(id, object);
        (Offer<Others>(id, object), ...);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

 private:
    template <typename Interface>
    void Offer(REFIID id, void** object) {
        if (IsEqualIID(id, __uuidof(Interface)))
            *object = static_cast<Interface*>(this);
    }

    std::atomic<ULONG> m_references = 1;
};

}  // namespace tobbin

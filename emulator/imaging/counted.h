#pragma once
// What the COM objects of the component have in common.

#include "imaging.h"

// References and the object's end. Object is the class itself, without further virtual functions;
// Interface is its one interface beside IUnknown.
template <class Object, class Interface>
class Counted : public Interface {
  public:
    explicit Counted(const IID& id) : id(id) {}
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** out) override {
        if (!out) return E_POINTER;
        *out = wanted == IID_IUnknown || wanted == id ? this : nullptr;
        if (!*out) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&count); }
    ULONG STDMETHODCALLTYPE Release() override {
        LONG left = InterlockedDecrement(&count);
        if (left == 0) delete static_cast<Object*>(this);
        return left;
    }

  private:
    const IID& id;
    LONG count = 1; // the creator's
};

// Releases a COM object.
template <class Interface>
class Reference {
  public:
    Reference() = default;
    ~Reference() { reset(); }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    Interface* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }
    Interface* get() const { return object; }
    Interface** out() {
        reset();
        return &object;
    }
    void reset(Interface* other = nullptr) {
        Interface* before = object;
        object = other;
        if (before) before->Release();
    }

  private:
    Interface* object = nullptr;
};

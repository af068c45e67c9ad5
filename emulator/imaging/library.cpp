#include "factory.h"

// COM unloads its servers with each apartment. The device has the component always at hand, and so
// it stays here once it was asked for.
static void stayLoaded() {
    HMODULE module;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&stayLoaded), &module);
}

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID type, REFIID id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (type != CLSID_ImagingFactory) return CLASS_E_CLASSNOTAVAILABLE;
    stayLoaded();
    Reference<ImagingClass> made;
    made.reset(new ImagingClass);
    return made->QueryInterface(id, out);
}

HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }
}

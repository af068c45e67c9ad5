# Windows CE on 32-bit ARM: compiled as bare-metal ARM with the device's calling convention and
# structure layout.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_CXX_COMPILER_TARGET armv4t-none-eabi)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
string(CONCAT CMAKE_CXX_FLAGS_INIT
    "-marm -mfloat-abi=soft -mabi=apcs-gnu -mms-bitfields -fsigned-char -fshort-wchar "
    "-fno-short-enums -faddrsig -fno-unwind-tables -fomit-frame-pointer "
    "-D_WIN32 -DWIN32 -D__MINGW32__ -D_ARM_ "
    "-D__stdcall= -D__cdecl= -D__fastcall= -D__thiscall= -D_cdecl= -D_stdcall= "
    "'-D__declspec(x)='")

# Where the two calling conventions of the process meet. The library's side: stdcall functions,
# variadic ones cdecl, a stack aligned to words. The VM's side: cdecl, a stack aligned to 16 bytes.
# The library holds a proxy in place of a JNIEnv; its second word is the real one. The functions lie
# on words: code for the device's processor branches to no other places.

.set proxy_real, 4

# Copies the caller's argument words to an aligned frame with room for reserve words, and leaves
# the source behind the last of them in esi.
.macro ENTER_ALIGNED words, reserve
    pushl %ebp
    movl %esp, %ebp
    pushl %esi
    pushl %edi
    subl $4*\reserve, %esp
    andl $-16, %esp
    leal 8(%ebp), %esi
    movl %esp, %edi
    movl $\words, %ecx
    cld
    rep movsl
.endm

# Puts the real environment in the proxy's place and calls a slot of its table.
.macro CALL_REAL index
    movl 8(%ebp), %eax
    movl proxy_real(%eax), %eax
    movl %eax, (%esp)
    movl (%eax), %eax
    call *4*\index(%eax)
    leal -8(%ebp), %esp
    popl %edi
    popl %esi
    popl %ebp
.endm

.macro JNI_FUNCTION index, name, words
.balign 4
jni_\index:
    ENTER_ALIGNED \words, \words
    CALL_REAL \index
    ret $4*\words
.endm

# The variable arguments lie behind the fixed ones and are passed on by their address.
.macro JNI_VARIADIC index, name, words, list_form
.balign 4
jni_\index:
    ENTER_ALIGNED \words, \words+1
    movl %esi, (%edi)
    CALL_REAL \list_form
    ret
.endm

.macro JNI_RESERVED index
jni_\index:
    ud2
.endm

.include "jni_functions.inc"

# The table of the proxies: void* jniThunks[].
.purgem JNI_FUNCTION
.purgem JNI_VARIADIC
.purgem JNI_RESERVED
.macro JNI_FUNCTION index, name, words
    .long jni_\index
.endm
.macro JNI_VARIADIC index, name, words, list_form
    .long jni_\index
.endm
.macro JNI_RESERVED index
    .long 0
.endm
.data
.globl _jniThunks
_jniThunks:
.include "jni_functions.inc"
.globl _jniThunksEnd
_jniThunksEnd:

# One entry for each native that can be bound: void* nativeStubs[]. An entry calls
# uint64_t enterNative(uint32_t number, uint32_t* arguments).
.set native_stub_count, 1024
.text
.balign 16
native_stubs:
.set number, 0
.rept native_stub_count
    pushl $number
    jmp native_stub_common
    .balign 16
    .set number, number+1
.endr

native_stub_common:
    popl %eax
    pushl %ebp
    movl %esp, %ebp
    leal 8(%ebp), %ecx
    subl $8, %esp
    movl %ecx, 4(%esp)
    movl %eax, (%esp)
    call _enterNative
    movl %ebp, %esp
    popl %ebp
    ret

.data
.globl _nativeStubs
_nativeStubs:
    .long native_stubs
.globl _nativeStubCount
_nativeStubCount:
    .long native_stub_count

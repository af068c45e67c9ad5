# What stands before each of the system's callback handlers: a frame of our own on the list of
# exception handlers. void* callbackStubs[]; a handler is uint32_t stdcall (void* arguments, uint32_t size).
.set callback_count, 64
.text
.balign 16
callback_stubs:
.set number, 0
.rept callback_count
    pushl $number
    jmp enter_callback
    .balign 16
    .set number, number+1
.endr

.balign 16
enter_callback:
    popl %eax
    pushl %ebp
    movl %esp, %ebp
    pushl $_leaveCallback
    pushl %fs:0
    movl %esp, %fs:0
    pushl 12(%ebp)
    pushl 8(%ebp)
    call *_systemCallbacks(,%eax,4)
    popl %fs:0
    movl %ebp, %esp
    popl %ebp
    ret $8

.data
.balign 4
.globl _callbackStubs
_callbackStubs:
.set number, 0
.rept callback_count
    .long callback_stubs+16*number
    .set number, number+1
.endr
.globl _callbackStubCount
_callbackStubCount:
    .long callback_count

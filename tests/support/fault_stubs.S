# One entry for each patched import. An entry asks uint32_t decideFault(uint32_t number) where to go
# on; with 0 it takes the arguments off the stack and answers the failure value.
.set stub_count, 256
.text
.balign 16
fault_stubs:
.set number, 0
.rept stub_count
    pushl $number
    jmp fault_common
    .balign 16
    .set number, number+1
.endr

fault_common:
    pushl 0(%esp)
    call _decideFault
    addl $4, %esp
    testl %eax, %eax
    jz answer_failure
    addl $4, %esp
    jmp *%eax
answer_failure:
    popl %eax
    popl %edx
    addl _faultBytes(,%eax,4), %esp
    movl _faultValues(,%eax,4), %eax
    jmp *%edx

.data
.globl _faultStubs
_faultStubs:
    .long fault_stubs

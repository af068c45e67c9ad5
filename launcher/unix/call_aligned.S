# uint64_t callAligned(void* function, const uint32_t* words, uint32_t count)
.globl _callAligned
_callAligned:
    pushl %ebp
    movl %esp, %ebp
    pushl %esi
    pushl %edi
    movl 16(%ebp), %ecx
    movl 12(%ebp), %esi
    leal (,%ecx,4), %eax
    subl %eax, %esp
    andl $-16, %esp
    movl %esp, %edi
    cld
    rep movsl
    call *8(%ebp)
    leal -8(%ebp), %esp
    popl %edi
    popl %esi
    popl %ebp
    ret

# Where code of this side calls code for the device's processor. An entry pushes its number and
# comes here; enterGuest runs the function, and entryBytes says how many bytes of arguments it takes
# off the stack, as its own convention has it.
.text
.balign 16
.globl _enterFromHost
_enterFromHost:
    pushl %ebp
    movl %esp, %ebp
    leal 12(%ebp), %eax
    subl $8, %esp
    movl %eax, 4(%esp)
    movl 4(%ebp), %eax
    movl %eax, (%esp)
    call _enterGuest
    movl 4(%ebp), %ecx
    movl _entryBytes(,%ecx,4), %ecx
    pushl 8(%ebp)
    popl 8(%ebp,%ecx)
    leal 8(%ebp,%ecx), %ecx
    movl (%ebp), %ebp
    movl %ecx, %esp
    ret

# Code for the device's processor returns here when the function ends, and never arrives.
.balign 16
.globl _guestReturns
_guestReturns:
    ud2

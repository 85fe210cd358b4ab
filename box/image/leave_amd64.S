// leave CODE: ends the machine through the debug device at port 0xf4; qemu's exit code is then 2 * CODE + 1.
        .global _start
_start: mov     (%rsp), %rax            // the number of arguments
        xor     %ebx, %ebx
        cmp     $2, %rax
        jl      2f
        mov     16(%rsp), %rsi          // the first one
1:      movzbl  (%rsi), %eax
        inc     %rsi
        test    %eax, %eax
        jz      2f
        sub     $'0', %eax
        imul    $10, %ebx
        add     %eax, %ebx
        jmp     1b
2:      mov     $172, %eax              // iopl(3)
        mov     $3, %edi
        syscall
        mov     %ebx, %eax
        mov     $0xf4, %dx
        out     %al, %dx
        jmp     2b
        .section .note.GNU-stack, "", @progbits

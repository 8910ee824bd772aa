    .section .rodata
    .globl board_signature
board_signature:
    .long 0x4b465731

// The word size of the macOS targets, for the C library's headers on this machine.
#define __WORDSIZE 64
#define __WORDSIZE_TIME64_COMPAT32 0
#define __SYSCALL_WORDSIZE 64

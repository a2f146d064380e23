// Empty: the C library's headers on this machine include it for a target whose pointers they do not know.

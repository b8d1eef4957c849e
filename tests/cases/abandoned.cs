class A {
#endif
}
int b; #endif
; #endif
int c;

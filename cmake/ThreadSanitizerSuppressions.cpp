// What the thread sanitizer finds inside code of others, which isn't built with it, and which it sees in part alone.
extern "C" char const* __tsan_default_suppressions();

extern "C" char const* __tsan_default_suppressions() {
    return "race:/usr/lib/vst\n"
           "thread:/usr/lib/vst\n"
           "race:swrast_dri.so\n"
           "thread:swrast_dri.so\n"
           "race:libGLX\n"
           "race:libX11.so\n"
           "mutex:libX11.so\n";
}

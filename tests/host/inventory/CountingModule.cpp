/// Counts the calls since its code was loaded; code that was freed and loaded again starts anew.
extern "C" __attribute__((visibility("default"))) int CountCall() {
    static int calls = 0;
    return ++calls;
}

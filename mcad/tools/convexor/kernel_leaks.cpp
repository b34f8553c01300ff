// Tells the leak checker of a sanitized build to pass over what the CAD kernel itself never frees.

extern "C" {

const char* __lsan_default_suppressions();
const char* __lsan_default_options();

const char* __lsan_default_suppressions() { return "leak:libTK\n"; }
const char* __lsan_default_options() { return "print_suppressions=0"; }

} // extern "C"

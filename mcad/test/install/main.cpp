// A program linked with the library.

extern "C" int useLibrary();

int main() { return useLibrary(); }

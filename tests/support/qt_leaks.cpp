// LeakSanitizer's suppressions for widget tests: fontconfig keeps the font patterns Qt asks it
// for until the process ends, by design. Our own leaks are still reported.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig.so\n";
}

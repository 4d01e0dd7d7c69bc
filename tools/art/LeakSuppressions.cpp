// fontconfig, through which librsvg sets text, keeps font patterns it never frees for the life of
// the process; LeakSanitizer would report them as leaks of ours in sanitized builds. A suppression
// that names a library matches every allocation made in it. Every program that links art-tool
// compiles this file in (it is an interface source of the library), since LeakSanitizer looks the
// function up in the program itself.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n";
}

#include "platform/win32/system/double_precision.h"

namespace bromvale {

void useDoublePrecision() {
#ifdef __i386__
    // No exception is raised, 53 bits, to the nearest and half to even.
    constexpr unsigned short kDoublePrecision = 0x027F;
    asm volatile("fninit\n\tfldcw %0" : : "m"(kDoublePrecision));
#endif
}

}  // namespace bromvale

#ifdef __i386__
// The start-up code of every program calls this by its first name, and the linker takes it from here before
// it looks into MinGW's own library, whose function chooses 80 bits. Both names stand together there.
extern "C" {
void _fpreset();
void fpreset();
void _fpreset() {
    bromvale::useDoublePrecision();
}
void fpreset() {
    bromvale::useDoublePrecision();
}
}
#endif

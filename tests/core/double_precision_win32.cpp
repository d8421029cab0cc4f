// The coprocessor of the 32-bit programs; the 64-bit ones don't compute with it.
#ifdef __i386__
#include <gtest/gtest.h>

#include "platform/win32/system/patient_call.h"

namespace bromvale {
namespace {

constexpr unsigned kPrecisionBits = 0x0300;
constexpr unsigned kDouble = 0x0200;

unsigned precision() {
    unsigned short word = 0;
    asm volatile("fnstcw %0" : "=m"(word));
    return word & kPrecisionBits;
}

const unsigned precisionOfConstructors = precision();

class Reader : public PatientCall {
  public:
    unsigned found = 0;

  protected:
    void run() override { found = precision(); }
};

TEST(DoublePrecisionTest, ItIsSetBeforeAnythingComputes) {
    EXPECT_EQ(precisionOfConstructors, kDouble);
    EXPECT_EQ(precision(), kDouble);
}

TEST(DoublePrecisionTest, AThreadThatWeStartHasItToo) {
    auto* reader = new Reader;
    ASSERT_TRUE(reader->doneInTime(10000));
    EXPECT_EQ(reader->found, kDouble);
    reader->release();
}

}  // namespace
}  // namespace bromvale
#endif

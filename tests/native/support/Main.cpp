// The main program of the native tests. Every misuse of the system is a failure of the test in
// which it is done, and so is whatever a test leaves behind: GDI objects, file handles, faults that
// are still set.
#include "tests/native/AllocationFaults.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"

#include <gtest/gtest.h>

namespace {

void FailTheTest(const std::string& what)
{
    ADD_FAILURE() << "misuse: " << what;
}

class CLeftovers : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { m_nMark = gdi::Mark(); }

    void OnTestEnd(const testing::TestInfo&) override
    {
        alloc::Off();
        for (const std::string& name : gdi::AliveSince(m_nMark))
            ADD_FAILURE() << name << " was not deleted";
        EXPECT_EQ(0, kernel::OpenHandles()) << "files were left open";
        gdi::FailCreation(0);
        kernel::FormatDisk();
        kernel::SetTime(nullptr, nullptr);
        kernel::SetCodePage(936);
        gdi::SetMisuseHandler(FailTheTest);
    }

    uint64_t m_nMark = 0;
};

} // namespace

// A request that is too large fails, as it does on Windows, and is no report.
extern "C" const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}

int main(int nArgs, char** ppszArgs)
{
    testing::InitGoogleTest(&nArgs, ppszArgs);
    gdi::SetMisuseHandler(FailTheTest);
    testing::UnitTest::GetInstance()->listeners().Append(new CLeftovers);
    return RUN_ALL_TESTS();
}

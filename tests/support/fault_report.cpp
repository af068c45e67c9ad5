// Linked into every program of tests: a fault in the code under test ends the program, wherever it
// happens.

#include "fault_report.h"
#include "fault_watch.h"
#include "toolkit.h"
#include <gtest/gtest.h>
#include <stdio.h>

static constexpr UINT faultCode = 134; // as a shell sees an abort

static const char* volatile context;

void sayWithFault(const char* text) { context = text; }

static UINT report(const FaultDescription& fault) {
    fflush(stdout);
    fprintf(stderr, "%s\n", fault.text);
    reportProcessor();
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    if (test) fprintf(stderr, "in the test %s.%s\n", test->test_suite_name(), test->name());
    if (context) fprintf(stderr, "in %s\n", context);
    fflush(stderr);
    return faultCode;
}

namespace {

struct Watch {
    Watch() { watchFaults(report); }
};

} // namespace

static const Watch watch;

// The documents of examples/ are what their scripts make, and what they say of themselves holds.
#include "support/program.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace vorn {
namespace {

const std::string Examples = VORN_SOURCE_DIR "/examples/";

std::string contentOf(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

class ExampleDocuments : public testing::TestWithParam<const char*> {};

TEST_P(ExampleDocuments, areWhatTheirScriptsMake)
{
    const TempFolder folder;
    const std::string name = std::string(GetParam()) + ".vn";
    const std::string command = "'" VORN_SOURCE_DIR "/scripts/make-examples.sh' '" VORN_CLI "' '" +
                                folder.file("") + "' > '" + folder.file("output") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.read("output"), "") << "a box has opened";
    const std::string made = folder.read(name);
    EXPECT_GT(made.size(), 10000U);
    EXPECT_TRUE(contentOf(Examples + name) == made) << "run scripts/make-examples.sh";
}

INSTANTIATE_TEST_SUITE_P(Files, ExampleDocuments,
                         testing::Values("household-budget", "loan-plan", "inventory"),
                         [](const auto& document) {
                             std::string name = document.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(Examples, sayWhatTheyShould)
{
    const TempFolder folder;
    const struct {
        const char* behaviour;
        const char* arguments;
        const char* output;
    } cases[] = {
        {"the whole list of spending is in the overview", "household-budget.vn --range F19",
         "yes\n"                                                                                                     },
        {"which leaves something",                        "household-budget.vn --range B17:F17",
         "1110.00\t1344.95\t1160.95\t966.65\t3472.55\n"                                                              },
        {"the loan is paid back to the cent",             "loan-plan.vn --range A35:F35",
         "24\t1/1/27\t528.57\t2.37\t526.20\t0.00\n"                                                                  },
        {"also by years",                                 "loan-plan.vn --sheet Years --range A7:D7",
         "In all\t12686.60\t686.60\t12000.00\n"                                                                      },
        {"the payment is the one of its terms",           "loan-plan.vn --range E3",                       "528.61\n"},
        {"as in the table of others",                     "loan-plan.vn --sheet 'Other terms' --range D7", "528.61\n"},
        {"everything that is short is ordered",           "inventory.vn --sheet Order --range B12",        "yes\n"   },
        {"and found by its code",                         "inventory.vn --sheet Groups --range B25",
         "Long-life milk, 1 l\n"                                                                                     },
        {"the days count from the counting",              "inventory.vn --range K14",                      "72\n"    },
    };
    for (const auto& c : cases) {
        const Outcome outcome = runProgram(folder, "show --locale en_US " + Examples + c.arguments);
        EXPECT_EQ(outcome.output, c.output) << c.behaviour;
        EXPECT_EQ(outcome.errors, "") << c.behaviour;
    }
}

} // namespace
} // namespace vorn

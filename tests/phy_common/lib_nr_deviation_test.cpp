#include "phy_common/lib_nr_deviation.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_deviation, the_page_has_the_rows_in_their_order)
{
    std::ifstream page(NR_MOD_LIB_SOURCE_DIR "/docs/deviations.md");
    std::string line;
    while (std::getline(page, line) && line.rfind("|---", 0) != 0)
        continue;
    for (const lib_nr_deviation_row_t& row : lib_nr_deviation_rows()) {
        std::getline(page, line);
        EXPECT_EQ(line, std::string("| `") + row.name + "` | " + row.clause + " | " + row.own + " | " + row.standard +
                            " | " + row.noticed + " |");
        lib_nr_rules_t rules;
        EXPECT_EQ(rules.pick(row.deviation, 1, 1) + rules.pick(row.deviation, 2, 5), 3);
        EXPECT_EQ(rules.get_met(), std::vector{row.deviation});
        EXPECT_STREQ(lib_nr_deviation_row(rules.get_met().front()).name, row.name);
    }
    std::getline(page, line);
    EXPECT_EQ(line, "");
}

} // namespace

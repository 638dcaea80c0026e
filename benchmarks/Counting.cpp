#include "Counting.h"

#include <csetjmp>
#include <csignal>
#include <regex>
#include <utility>
#include <vector>

#include <valgrind/callgrind.h>

namespace bench
{

namespace
{

struct Row
{
    std::string name;
    std::size_t items;
    std::function<void()> run;
};

std::vector<Row>& Rows()
{
    static std::vector<Row> rows;
    return rows;
}

sigjmp_buf unknownInstruction;

/// Runs a row and has callgrind count it, which raises SIGILL at an instruction that it does not know.
void Count(Row& row)
{
    std::string const label = std::to_string(row.items) + ' ' + row.name;
    if (sigsetjmp(unknownInstruction, 1) != 0)
    {
        CALLGRIND_ZERO_STATS;
        return;
    }
    row.run(); // what is bound, allocated or built once is not a row's own work
    CALLGRIND_TOGGLE_COLLECT;
    row.run();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(label.c_str());
}

} // namespace

void AddCount(std::string const& name, std::size_t items, std::function<void()> run)
{
    Rows().push_back({name, items, std::move(run)});
}

bool CountInstructions(std::string const& filter)
{
    if (!RUNNING_ON_VALGRIND)
        return false;
    std::signal(SIGILL, [](int) { siglongjmp(unknownInstruction, 1); });
    std::regex const pattern(filter);
    for (Row& row : Rows())
        if (std::regex_search(row.name, pattern))
            Count(row);
    return true;
}

} // namespace bench

#include "ServiceAccess/RecordCoding.h"
#include "Support/Bodies.h"
#include "Support/Series.h"

#include <iostream>
#include <string>

using namespace trellisport;

/// Decodes one list and tells what the process then holds more than before. A process each, so that
/// nothing left over from another list is used again.
int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::cerr << "trellisport-bench-memory short|long COUNT\n";
        return 2;
    }
    const std::string shape = argv[1];
    const std::size_t count = std::stoul(argv[2]);
    const std::string name = "/" + shape + "/" + std::to_string(count);
    const bench::Memory before = bench::memoryNow();
    std::string body = shape == "long" ? bench::longLogs(count) : bench::shortLogs(count);
    const auto size = static_cast<double>(body.size());
    const auto logs = decode<std::vector<DevLog>>(std::move(body));
    const bench::Memory after = bench::memoryNow();
    if (logs.size() != count) {
        return 1;
    }
    bench::report("reply-size" + name, "B", {size});
    bench::report("decoded-allocated" + name, "B", {after.allocated - before.allocated});
    bench::report("decoded-resident" + name, "B", {after.resident - before.resident});
    return 0;
}

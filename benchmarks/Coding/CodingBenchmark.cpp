#include "Coding/JsonPeers.h"
#include "ServiceAccess/RecordCoding.h"
#include "Support/Bodies.h"
#include "Support/Series.h"

#include <benchmark/benchmark.h>

#include <map>
#include <stdexcept>
#include <utility>

namespace trellisport::bench {

namespace {

enum class Shape { Short, Long };

const std::string &logs(Shape shape, std::size_t count)
{
    static std::map<std::pair<Shape, std::size_t>, std::string> made;
    std::string &body = made[{shape, count}];
    if (body.empty()) {
        body = shape == Shape::Short ? shortLogs(count) : longLogs(count);
    }
    return body;
}

/// Times work alone: neither what it is given nor the end of what it makes counts.
template <typename Work>
void timeAlone(benchmark::State &state, const std::string &body, const Work &work)
{
    while (state.KeepRunning()) {
        std::string copy = received(body);
        const auto start = SteadyClock::now();
        auto made = work(copy);
        state.SetIterationTime(millisecondsSince(start) / 1000);
        benchmark::DoNotOptimize(made);
    }
}

void addDecoding(Shape shape, std::size_t count)
{
    const std::string name = std::string("decode/") + (shape == Shape::Short ? "short/" : "long/") +
                             std::to_string(count) + "/";
    const auto add = [&](const char *who, auto work) {
        benchmark::RegisterBenchmark(
            (name + who).c_str(),
            [=](benchmark::State &state) { timeAlone(state, logs(shape, count), work); })
            ->UseManualTime()
            ->Iterations(count >= 20000 ? 1 : 5)
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", [](std::string &body) { return decode<std::vector<DevLog>>(std::move(body)); });
    add("simdjson", [](std::string &body) {
        parseBarely(body);
        return 0;
    });
    add("qt", [](std::string &body) { return logsThroughQt(body); });
    add("nlohmann", [](std::string &body) { return logsThroughNlohmann(body); });
}

void addEncoding(Shape shape, std::size_t count)
{
    const std::string name = std::string("encode/") + (shape == Shape::Short ? "short/" : "long/") +
                             std::to_string(count) + "/";
    const auto add = [&](const char *who, auto run) {
        benchmark::RegisterBenchmark((name + who).c_str(), run)
            ->UseManualTime()
            ->Iterations(count >= 20000 ? 1 : 5)
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", [=](benchmark::State &state) {
        const auto records = decode<std::vector<DevLog>>(received(logs(shape, count)));
        timeAlone(state, {}, [&](std::string & /*body*/) { return encode(records); });
    });
    add("nlohmann", [=](benchmark::State &state) {
        const auto records = decode<std::vector<DevLog>>(received(logs(shape, count)));
        const auto document = documentOf(records);
        if (document.dump() != encode(records)) {
            throw std::runtime_error("the two do not write the same");
        }
        timeAlone(state, {}, [&](std::string & /*body*/) { return document.dump(); });
    });
}

const bool added = [] {
    for (const std::size_t count : {1000U, 10000U, 100000U}) {
        addDecoding(Shape::Short, count);
        addEncoding(Shape::Short, count);
    }
    for (const std::size_t count : {1000U, 20000U}) {
        addDecoding(Shape::Long, count);
        addEncoding(Shape::Long, count);
    }
    return true;
}();

} // namespace

} // namespace trellisport::bench

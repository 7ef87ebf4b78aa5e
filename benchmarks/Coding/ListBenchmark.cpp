#include "Platform/Platform.h"
#include "ProjectDetail/Questions/QaPairs.h"
#include "ProjectsList/ProjectGroups.h"
#include "ServiceAccess/RecordCoding.h"
#include "Support/Bodies.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace trellisport::bench {

namespace {

constexpr const char *sought = "deploy";

void pairQuestions(benchmark::State &state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string asked = questions(count);
    const std::string answered = answers(count);
    while (state.KeepRunning()) {
        const auto pairs = qaPairs(asked, answered);
        if (pairs.size() != count || pairs.back().answer.empty()) {
            state.SkipWithError("not every question has its answer");
        }
        benchmark::DoNotOptimize(pairs);
    }
}

std::vector<Project> someProjects(std::size_t count)
{
    return decode<std::vector<Project>>(received(projects(count)));
}

void searchTitles(benchmark::State &state)
{
    const auto listed = someProjects(static_cast<std::size_t>(state.range(0)));
    const auto places = statusPlaces(listed);
    const auto titles = platform::Platform::current().textRules().searchable(titlesOf(listed));
    while (state.KeepRunning()) {
        auto groups = groupProjects(places, {}, titles->holding(sought));
        benchmark::DoNotOptimize(groups);
    }
}

void searchTitlesPlainly(benchmark::State &state)
{
    std::vector<std::string> titles;
    for (const Project &project : someProjects(static_cast<std::size_t>(state.range(0)))) {
        titles.emplace_back(project.title.view());
    }
    while (state.KeepRunning()) {
        std::size_t found = 0;
        for (const std::string &title : titles) {
            found += title.find(sought) != std::string::npos ? 1U : 0U;
        }
        benchmark::DoNotOptimize(found);
    }
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.05);
}

BENCHMARK(pairQuestions)->Name("qa-pairs")->Apply(sizes);
BENCHMARK(searchTitles)->Name("search/ours")->Apply(sizes);
BENCHMARK(searchTitlesPlainly)->Name("search/std")->Apply(sizes);

} // namespace

} // namespace trellisport::bench

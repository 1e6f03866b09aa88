#include "VarnetApp/AppStore/ServiceFilter.h"

#include <gtest/gtest.h>

#include <string>

namespace varnet {
namespace {

/// Servers named by their frameworks' arguments: "vite" in project "shop", and so on.
struct Entry {
    std::int32_t pid;
    const char* name;
    const char* project;
    int port;
    std::optional<double> cpu;
    std::optional<std::uint64_t> memory;
};

std::vector<Service> servicesOf(const std::vector<Entry>& entries) {
    std::vector<Service> services;
    for (const Entry& entry : entries) {
        auto sample = std::make_shared<ProcessSample>();
        sample->id = {1, entry.pid, 1};
        sample->name = entry.name;
        sample->ports = {entry.port};
        sample->averageCPU = entry.cpu;
        sample->memory = entry.memory;
        if (*entry.project)
            sample->project = std::make_shared<const Project>(Project{"/", "/", entry.project, "main"});
        services.push_back({sample, {sample}});
    }
    return services;
}

std::string pids(const ServiceFilter& filter, const std::vector<Service>& services) {
    std::string text;
    for (const Service* service : filter.apply(services))
        text += std::to_string(service->root->id.pid) + " ";
    return text;
}

TEST(ServiceFilter, findsAndOrders) {
    const auto services = servicesOf({{10, "alpha", "Shop", 3000, 5, 100},
                                      {20, "Beta", "", 8000, std::nullopt, 900},
                                      {30, "alpha2", "blog", 3001, 7, std::nullopt},
                                      {40, "alpha10", "blog", 9229, 5, 100}});
    struct Row {
        const char* oddity;
        const char* search;
        SortOrder sort;
        const char* expected;
    };
    for (const Row& row : {
             Row{"unknown CPU last, equals by id", "", SortOrder::cpu, "30 10 40 20 "},
             Row{"unknown memory last, equals by id", "", SortOrder::memory, "20 10 40 30 "},
             Row{"names as people sort them", "", SortOrder::name, "10 30 40 20 "},
             Row{"a name in another case", "BETA", SortOrder::cpu, "20 "},
             Row{"the project's name", "shop", SortOrder::cpu, "10 "},
             Row{"part of a port", "300", SortOrder::cpu, "30 10 "},
             Row{"a port as it is shown", ":8000", SortOrder::cpu, "20 "},
             Row{"nothing like it", "3002", SortOrder::cpu, ""},
         }) {
        ServiceFilter filter;
        filter.search = row.search;
        filter.sort = row.sort;
        EXPECT_EQ(pids(filter, services), row.expected) << row.oddity;
    }
}

} // namespace
} // namespace varnet

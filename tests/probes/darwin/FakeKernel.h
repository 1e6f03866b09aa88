#pragma once

#include <libproc.h>
#include <mach/mach.h>
#include <mach/mach_time.h>
#include <sys/sysctl.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet::probes {

struct FakeDescriptor {
    std::uint32_t type = PROX_FDTYPE_SOCKET;
    int kind = SOCKINFO_TCP;
    int state = TSI_S_LISTEN;
    int port = 0; ///< as the kernel holds it: network order, with rubbish above
    int reply = sizeof(socket_fdinfo);
};

struct FakeProcess {
    proc_bsdinfo basic{};
    int basicReply = sizeof(proc_bsdinfo);
    int basicError = 0;
    std::optional<rusage_info_v2> usage; ///< empty: refused
    std::string path;                    ///< empty: refused
    std::string cwd;
    int cwdReply = sizeof(proc_vnodepathinfo);
    std::optional<std::string> arguments; ///< the block; empty: refused
    std::vector<FakeDescriptor> descriptors;
    std::vector<int> tableAnswers; ///< in place of the table's size, one a call; the last of them stays
    int tableError = 0;
};

/// A key of the machine's controller.
struct FakeKey {
    std::string type;
    std::string data;
    std::uint32_t size = 2;
    std::uint8_t informationResult = 0;
    std::uint8_t valueResult = 0;
};

/// A macOS kernel that does as it is told. The one made last answers the calls of the probes.
struct FakeKernel {
    FakeKernel();
    FakeKernel(const FakeKernel&) = delete;
    FakeKernel& operator=(const FakeKernel&) = delete;
    ~FakeKernel();
    static FakeKernel& running();

    /// A living process of this user, started 100.000007 s after 1970.
    FakeProcess& addProcess(std::int32_t pid, const std::string& name = "node");
    FakeProcess* find(std::int32_t pid);

    // Processes. Who is listed need not be there any more.
    std::vector<std::int32_t> listed;
    std::optional<int> firstAnswer;  ///< in place of the number of who is listed
    std::optional<int> secondAnswer; ///< in place of the same
    std::map<std::int32_t, FakeProcess> processes;
    mach_timebase_info_data_t timebase{1, 1};
    int usageCalls = 0;
    int killAnswer = 0; ///< errno, or 0
    std::vector<std::pair<int, int>> kills;

    // The machine.
    std::map<std::string, std::string> named; ///< bytes of named values; one that is missing is refused
    std::optional<host_cpu_load_info> load;
    std::optional<vm_statistics64> pages;
    vm_size_t pageSize = 16'384;
    int hostRights = 0; ///< held
    mach_msg_type_number_t wordsAsked = 0;

    // The controller.
    bool hasController = true;
    bool controllerOpens = true;
    std::map<std::string, FakeKey> keys;
    int services = 0; ///< objects held
    int connections = 0;

    // Heat. Empty: nothing to subscribe to.
    std::optional<std::uint64_t> pressure;
    int subscriptions = 0;
};

} // namespace varnet::probes

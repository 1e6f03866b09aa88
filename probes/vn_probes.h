/// The kernel layer: the only code that talks to the operating system's process and statistics interfaces.
///
/// Every function is synchronous, fills caller-owned buffers, and reports failure by its result: it never
/// raises and never prints. The stateless functions may be called from any thread. A handle (VNTable,
/// VNListeners, VNSensors, VNDiskWalk) belongs to one thread at a time.
///
/// Process names and paths are bytes as the kernel gives them; they need not be valid UTF-8.
#ifndef VARNET_VN_PROBES_H
#define VARNET_VN_PROBES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    VN_NAME_SIZE = 64,   ///< bytes of a process name, the NUL included
    VN_PATH_SIZE = 4096, ///< bytes of a path, the NUL included
    VN_FLAG_SYSTEM = 1   ///< bit 0 of `flags`: a process of the kernel itself
};

/// One process.
typedef struct VNProcessEntry {
    int32_t pid;
    int32_t parent;          ///< the parent's pid
    uint32_t uid;            ///< the effective user
    uint32_t flags;          ///< VN_FLAG_SYSTEM
    uint64_t start;          ///< start time, microseconds since 1970
    uint64_t cpu;            ///< nanoseconds of user plus system CPU time since the process began
    uint64_t memory;         ///< bytes the process itself holds: anonymous, shared and swapped
    uint64_t wakeups;        ///< wake-ups since the process began
    int32_t hasUsage;        ///< 1 when cpu, memory and wakeups were read, else 0
    char name[VN_NAME_SIZE]; ///< short name, NUL-terminated
    char path[VN_PATH_SIZE]; ///< executable, NUL-terminated, empty when unknown
} VNProcessEntry;

/// CPU time of the whole machine in clock ticks. Differences are to be taken modulo 2^32, the width some
/// kernels count in; a counter may also step back by a few ticks.
typedef struct VNCPUTicks {
    uint64_t user;
    uint64_t system;
    uint64_t idle;
    uint64_t nice;
} VNCPUTicks;

/// Memory of the whole machine in bytes. A field counts only when the flag of its name is 1.
typedef struct VNSystemMemory {
    uint64_t compressed;
    uint64_t swapUsed;
    uint64_t used;
    int32_t hasCompressed;
    int32_t hasSwap;
    int32_t hasUsed;
} VNSystemMemory;

/// One fan.
typedef struct VNFan {
    int32_t id;     ///< 0 to 9
    double rpm;     ///< revolutions per minute, 0 to 20000
    double maximum; ///< top speed; 0 when not known
} VNFan;

/// Frees a list from vn_processes or vn_process_graph. NULL is allowed.
void vn_free(void* list);

/// Start (microseconds since 1970) and effective user of a living process.
/// @return 0, or -1 when there is no such process (one that has ended but was not yet collected by its
///         parent counts as gone) or it cannot be read
int32_t vn_identity(int32_t pid, uint64_t* start, uint32_t* uid);

/// Every living process with path and usage. The caller frees the list with vn_free.
/// @return the count of entries, or -1 with *list NULL
int32_t vn_processes(VNProcessEntry** list);

/// The cheap list: as vn_processes, with path, cpu, memory and wakeups left zero and hasUsage 0.
int32_t vn_process_graph(VNProcessEntry** list);

/// Executable path of a process, cut to size. @return 0, or -1 when unknown
int32_t vn_path(int32_t pid, char* buffer, size_t size);

/// Working directory of a process, cut to size. @return 0, or -1 when unknown
int32_t vn_cwd(int32_t pid, char* buffer, size_t size);

/// Argument vector of a process with one tab between arguments. A vector too long for the buffer is cut
/// after a whole argument. A tab inside an argument reads as a separator.
/// @return 0, also for a process without arguments; -1 when unknown
int32_t vn_arguments(int32_t pid, char* buffer, size_t size);

/// TCP ports that a process listens on, each once, in no particular order.
/// @param capacity room in ports; what does not fit is left out
/// @return the count written, or -1 when the process's sockets cannot be read
int32_t vn_ports(int32_t pid, uint16_t* ports, int32_t capacity);

/// @return 0, or -1
int32_t vn_cpu_ticks(VNCPUTicks* ticks);

/// Fills what can be read and leaves the flags of the rest 0.
void vn_system_memory(VNSystemMemory* memory);

/// Boot time in seconds since 1970, read once per run of the program; 0 on failure.
int64_t vn_boot_time(void);

/// Hardware model, NUL-terminated. @return 0, else non-zero
int32_t vn_model(char* buffer, size_t size);

/// Whether a pid is in use, without touching the process.
/// @return 0 when it is, ESRCH when it is not (or has ended and only waits to be collected), EPERM when it
///         is and belongs to somebody else; other errno values mean unknown
int32_t vn_exists(int32_t pid);

/// Sends SIGTERM (15) or SIGKILL (9) to a process whose start and user still are the expected ones. All stop
/// safety narrows to this one function.
/// @return 0 when the signal was delivered to that very process. EPERM: the pid is below 2 or this program,
///         or the user is not ours. EINVAL: another signal. ESRCH: gone. EACCES: could not be checked.
///         70: the pid is another process by now. Otherwise the kernel's errno. Nothing is sent unless 0.
int32_t vn_signal_checked(int32_t pid, uint64_t start, uint32_t uid, int32_t signal);

/// A table that remembers: between reads it keeps its entries and reads a process anew only when its CPU
/// clock has moved, when it is new, or when its parent has gone. All tables of the program share what they
/// remember, and each may be read from a thread of its own.
typedef struct VNTable VNTable;

/// One process of a table. Strings belong to the table and live until its next read or its end.
typedef struct VNTableEntry {
    int32_t pid;
    int32_t parent;
    uint32_t uid;
    uint32_t flags;
    uint64_t start;
    uint64_t cpu;
    uint64_t memory; ///< of a process that sleeps, at most 30 s old
    uint64_t wakeups;
    int32_t hasUsage;
    const char* name;
    const char* path; ///< "" when unknown or in a cheap read
} VNTableEntry;

/// @return a table to be closed by the caller; NULL without memory
VNTable* vn_table_open(void);

/// Reads every living process, in ascending order of pid.
/// @param full non-zero: with path and usage, as vn_processes; 0: as vn_process_graph
/// @param entries receives a list that belongs to the table and lives until its next read or its end
/// @return the count of entries, or -1 with *entries NULL
int32_t vn_table_read(VNTable* table, int32_t full, const VNTableEntry** entries);

/// NULL is allowed.
void vn_table_close(VNTable* table);

/// All listening TCP sockets at one moment, to be matched against many processes.
typedef struct VNListeners VNListeners;

/// @return a dump to be closed by the caller; NULL on failure
VNListeners* vn_listeners_open(void);

/// As vn_ports, answered from the dump.
int32_t vn_listeners_ports(const VNListeners* listeners, int32_t pid, uint16_t* ports, int32_t capacity);

/// NULL is allowed.
void vn_listeners_close(VNListeners* listeners);

/// The fans of the running machine, each time in the same order.
/// @param capacity room in fans; never more than 10 are written, the first of them
/// @return the count written, 0 on a machine that shows no fan, or -1 when a fan cannot be read or tells a
///         speed that cannot be
int32_t vn_fans(VNFan* fans, int32_t capacity);

/// The machine's sensors with what is remembered of them between two readings.
typedef struct VNSensors VNSensors;

/// @param sys folder to read in place of /sys, where the kernel has one; NULL for the running kernel's
/// @return sensors to be closed by the caller; NULL without memory
VNSensors* vn_sensors_open(const char* sys);

/// As vn_fans.
int32_t vn_sensors_fans(VNSensors* sensors, VNFan* fans, int32_t capacity);

/// How hard heat presses: 0 nominal, 1 fair, 2 serious, 3 critical. 0 also for a machine that tells nothing.
/// May be asked at any rate: temperatures are read at most every 5 s.
int32_t vn_sensors_thermal_state(VNSensors* sensors);

/// NULL is allowed.
void vn_sensors_close(VNSensors* sensors);

/// What a walked entry is.
enum {
    VN_DISK_DIRECTORY = 1,
    VN_DISK_FILE = 2, ///< a regular file
    VN_DISK_SYMLINK = 3,
    VN_DISK_OTHER = 4, ///< a pipe, socket or device
    VN_DISK_ERROR = 5  ///< something is there, or was a moment ago, that cannot be looked at
};

/// One entry of a walk. An entry of kind VN_DISK_ERROR holds its path and the error alone.
typedef struct VNDiskEntry {
    const char* path;   ///< full path, NUL-terminated, of any length; the walk's own until its next step
    uint64_t inode;     ///< with `device`, which object it is
    uint64_t allocated; ///< bytes it occupies
    uint64_t logical;   ///< bytes it is long; 0 for a directory
    uint64_t links;     ///< names it has
    int64_t modified;   ///< seconds since 1970
    int32_t device;
    uint32_t owner; ///< user
    uint32_t kind;
    int32_t error; ///< errno
} VNDiskEntry;

/// A walk through everything at and below a path. It follows no symbolic link, tells a directory before what
/// is in it and a directory's other entries before those of its subdirectories, in no particular order
/// otherwise. Paths may be longer and trees deeper than any single call could take, and few descriptors are
/// held open. What cannot be read is told as an error entry, and the walk goes on: a directory whose list
/// cannot be read comes as a directory and once more as an error; one that encloses itself as an error.
typedef struct VNDiskWalk VNDiskWalk;

/// Starts at a path. One where nothing is, or nothing can be looked at, gives a walk of a single error entry.
/// @return a walk to be closed by the caller; NULL without memory, or when the path is NULL or empty
VNDiskWalk* vn_disk_open(const char* path);

/// The same, but does not enter a directory that lies on another device than the start; the directory itself
/// is told.
VNDiskWalk* vn_disk_open_volume(const char* path);

/// One step.
/// @return 1 when the entry was filled, 0 at the end, -1 on failure of the walk as a whole
int32_t vn_disk_next(VNDiskWalk* walk, VNDiskEntry* entry);

/// Leaves out what is below the directory that was told last. NULL is allowed.
void vn_disk_skip(VNDiskWalk* walk);

/// NULL is allowed.
void vn_disk_close(VNDiskWalk* walk);

#ifdef __cplusplus
}
#endif

#endif

// Process calls of the macOS system library, as far as the probes use them. Records have the kernel's sizes;
// what nobody reads of them is left as room.
#pragma once

#include <cstdint>

#define PROC_PIDLISTFDS 1
#define PROC_PIDTBSDINFO 3
#define PROC_PIDVNODEPATHINFO 9
#define PROC_PIDFDSOCKETINFO 3
#define PROX_FDTYPE_SOCKET 2
#define RUSAGE_INFO_V2 2

enum { SOCKINFO_IN = 1, SOCKINFO_TCP = 2, SOCKINFO_UN = 3 };
enum { TSI_S_LISTEN = 1, TSI_S_ESTABLISHED = 4 };

struct proc_bsdinfo {
    std::uint32_t pbi_flags;
    std::uint32_t pbi_status;
    std::uint32_t pbi_xstatus;
    std::uint32_t pbi_pid;
    std::uint32_t pbi_ppid;
    std::uint32_t pbi_uid;
    std::uint32_t otherUsers[6];
    char pbi_comm[16];
    char pbi_name[32];
    std::uint32_t groups[6];
    std::uint64_t pbi_start_tvsec;
    std::uint64_t pbi_start_tvusec;
};

struct vnode_info_path {
    char vip_vi[152];
    char vip_path[1024];
};

struct proc_vnodepathinfo {
    vnode_info_path pvi_cdir;
    vnode_info_path pvi_rdir;
};

struct proc_fdinfo {
    std::int32_t proc_fd;
    std::uint32_t proc_fdtype;
};

struct in_sockinfo {
    int insi_fport;
    int insi_lport;
    char addresses[72];
};

struct tcp_sockinfo {
    in_sockinfo tcpsi_ini;
    int tcpsi_state;
};

struct socket_info {
    char soi_stat[232];
    int soi_kind;
    std::uint32_t rfu_1;
    union {
        tcp_sockinfo pri_tcp;
        char room[528];
    } soi_proto;
};

struct socket_fdinfo {
    char pfi[24];
    socket_info psi;
};

struct rusage_info_v2 {
    std::uint8_t ri_uuid[16];
    std::uint64_t ri_user_time;
    std::uint64_t ri_system_time;
    std::uint64_t ri_pkg_idle_wkups;
    std::uint64_t between[4];
    std::uint64_t ri_phys_footprint;
    std::uint64_t after[10];
};
typedef void* rusage_info_t;

extern "C" {
int proc_listallpids(void* buffer, int size);
int proc_pidinfo(int pid, int flavor, std::uint64_t argument, void* buffer, int size);
int proc_pidfdinfo(int pid, int descriptor, int flavor, void* buffer, int size);
int proc_pidpath(int pid, void* buffer, std::uint32_t size);
int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer);
}

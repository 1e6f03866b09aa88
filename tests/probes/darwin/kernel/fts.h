// Traversal of file hierarchies, as far as the probes use it.
#pragma once

#include <sys/stat.h>

#define FTS_NOCHDIR 0x004
#define FTS_PHYSICAL 0x010
#define FTS_XDEV 0x040

#define FTS_D 1
#define FTS_DC 2
#define FTS_DEFAULT 3
#define FTS_DNR 4
#define FTS_DOT 5
#define FTS_DP 6
#define FTS_ERR 7
#define FTS_F 8
#define FTS_NS 10
#define FTS_NSOK 11
#define FTS_SL 12
#define FTS_SLNONE 13
#define FTS_W 14

#define FTS_SKIP 4

struct FTS {
    int fts_options;
};

struct FTSENT {
    char* fts_path;
    int fts_errno;
    unsigned short fts_info;
    struct stat* fts_statp;
};

extern "C" {
FTS* fts_open(char* const* paths, int options, int (*compare)(const FTSENT**, const FTSENT**));
FTSENT* fts_read(FTS* hierarchy);
int fts_set(FTS* hierarchy, FTSENT* entry, int instruction);
int fts_close(FTS* hierarchy);
}

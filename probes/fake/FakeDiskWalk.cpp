#include "probes/fake/FakeDiskWalk.h"

namespace varnet {

std::int32_t FakeDiskWalk::next(VNDiskEntry& entry) {
    if (at_ == tree_.entries.size()) return tree_.failsAtEnd ? -1 : 0;
    if (tree_.onStep) tree_.onStep(at_);
    const FakeDiskEntry& told = tree_.entries[at_++];
    entry = {};
    entry.path = told.path ? told.path->c_str() : nullptr;
    entry.inode = told.inode;
    entry.allocated = told.allocated;
    entry.logical = told.logical;
    entry.links = told.links;
    entry.modified = told.modified;
    entry.device = told.device;
    entry.owner = told.owner;
    entry.kind = told.kind;
    const bool elsewhere = told.device != tree_.entries.front().device;
    if (scope_ == DiskScope::oneVolume && elsewhere) skip();
    return 1;
}

void FakeDiskWalk::skip() {
    if (at_ == 0 || !tree_.entries[at_ - 1].path) return;
    const std::string below = *tree_.entries[at_ - 1].path + '/';
    while (at_ < tree_.entries.size() && tree_.entries[at_].path &&
           tree_.entries[at_].path->starts_with(below)) {
        ++at_;
    }
}

} // namespace varnet

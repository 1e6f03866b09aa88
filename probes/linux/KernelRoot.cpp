#include "probes/linux/KernelRoot.h"

namespace varnet::probes {

const KernelRoot& KernelRoot::live() {
    static const KernelRoot root;
    return root;
}

} // namespace varnet::probes

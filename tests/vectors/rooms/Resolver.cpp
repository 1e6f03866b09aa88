#include "VarnetCore/Monitoring/ProjectResolver.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/ScratchTree.h"

namespace varnet::vectors {
namespace {

Json runStep(ProjectResolver& resolver, ScratchTree& tree, const Json& step) {
    const std::string op = readText(step, "op");
    const Date now = readDate(step, "now");
    if (op == "resolve") return written(resolver.resolve(readText(step, "path"), now));
    if (op == "edit") {
        tree.apply(at(step, "entries"));
    } else if (op == "invalidate") {
        resolver.invalidate();
    } else if (op == "resolveMany") {
        const std::string prefix = readText(step, "prefix");
        const int count = read<int>(step, "count");
        for (int number = 0; number < count; ++number)
            resolver.resolve(prefix + std::to_string(number), now);
    } else {
        throw std::runtime_error("unknown step " + op);
    }
    return nullptr;
}

/// The expectation names the tree's place too, so it is located before the comparison.
std::optional<Difference> resolve(const Json& vector) {
    ScratchTree tree;
    const Json input = tree.located(at(vector, "input"));
    tree.apply(at(input, "tree"));
    ProjectResolver resolver(readText(input, "home"));
    const Json got =
        mapped(at(input, "steps"), [&](const Json& step) { return runStep(resolver, tree, step); });
    return firstDifference(tree.located(expectationOf(vector)), got, {});
}

const Room room{{"ProjectResolver", resolve}};

} // namespace
} // namespace varnet::vectors

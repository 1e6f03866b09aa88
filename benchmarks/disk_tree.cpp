// Makes a tree like a developer's disk, for measuring the scanner: dependency folders with their many small
// files, hard links, odd names, deep and wide places. Always the same for the same count.
//
// Usage: varnet_disk_tree FOLDER ENTRIES

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

class Tree {
public:
    explicit Tree(long entries) : left_(entries) {}

    void checkout(const std::string& path) {
        folder(path);
        for (const char* part : {"/src", "/docs", "/test"})
            files(path + part, 40, 9);
        dependencies(path + "/node_modules", 2);
        folder(path + "/.git");
        folder(path + "/.git/objects");
        for (int fan = 0; fan < 64 && left_ > 0; ++fan) {
            char name[8];
            std::snprintf(name, sizeof name, "/%02x", fan);
            files(path + "/.git/objects" + name, 12, 38);
        }
        files(path + "/caf\xC3\xA9 \xE2\x98\x95", 3, 12);
        files(path + "/Cafe\xCC\x81", 3, 12);
        files(path + "/not \xFF utf-8", 2, 6);
    }

    long left() const { return left_; }

private:
    void folder(const std::string& path) {
        if (left_ > 0 && mkdir(path.c_str(), 0755) == 0) --left_;
    }

    void files(const std::string& path, int most, std::size_t nameLength) {
        folder(path);
        const int count = 1 + static_cast<int>(random_() % static_cast<unsigned>(most));
        for (int at = 0; at < count && left_ > 0; ++at) {
            std::string name = std::to_string(random_()) + "abcdefghijklmnopqrstuvwxyzabcdef";
            name.resize(nameLength);
            file(path + "/" + name + std::to_string(at) + (at % 3 == 0 ? ".js" : ".d.ts"));
        }
    }

    void file(const std::string& path) {
        if (random_() % 16 == 0 && !last_.empty()) {
            if (link(last_.c_str(), path.c_str()) == 0) --left_;
            return;
        }
        const int made = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (made < 0) return;
        --left_;
        // Small files of several sizes, most of them one block.
        static const std::string text(20'000, 'x');
        const std::size_t size = random_() % 8 == 0 ? random_() % text.size() : random_() % 64;
        if (write(made, text.data(), size) < 0) std::perror("write");
        close(made);
        last_ = path;
    }

    void dependencies(const std::string& path, int depth) {
        folder(path);
        for (int package = 0; package < (depth == 2 ? 120 : 4) && left_ > 0; ++package) {
            const std::string root = path + "/package-" + std::to_string(package);
            files(root, 6, 8);
            files(root + "/lib", 10, 10);
            files(root + "/dist", 14, 14);
            files(root + "/dist/esm", 14, 14);
            if (depth > 0 && random_() % 4 == 0) dependencies(root + "/node_modules", depth - 1);
        }
    }

    std::mt19937 random_{42};
    long left_;
    std::string last_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 || std::atol(argv[2]) <= 0) {
        std::fprintf(stderr, "usage: varnet_disk_tree FOLDER ENTRIES\n");
        return 2;
    }
    const std::string root = argv[1];
    Tree tree(std::atol(argv[2]));
    mkdir(root.c_str(), 0755);
    for (int project = 0; tree.left() > 0; ++project) {
        const long before = tree.left();
        tree.checkout(root + "/project-" + std::to_string(project));
        if (tree.left() == before) return 1; // a full disk, or one that cannot be written
    }
}

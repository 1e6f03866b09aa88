#include "VarnetCore/Disk/DiskVolumes.h"
#include "VarnetCore/Disk/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace varnet {
namespace {

using testing::ElementsAre;

TEST(FurtherRoots, areLocalAndSeenOnce) {
    const std::string ext4Root = "29 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n";
    const auto removable = [](const std::string& device) { return device == "8:33"; };
    using Row = std::tuple<const char*, std::string, std::vector<std::string>>;
    for (const auto& [machine, table, roots] : std::vector<Row>{
             {"one file system", ext4Root, {}},
             {"separate home, blanks in a name",
              ext4Root + "30 29 8:3 / /home rw - ext4 /dev/sda3 rw\n"
                         "31 29 8:4 / /srv/my\\040data rw - xfs /dev/sda4 rw\n",
              {"/home", "/srv/my data"}},
             {"white space that the table writes as it is",
              ext4Root + "30 29 8:3 / /srv/a\rb\fc\vd rw - ext4 /dev/sda3 rw\n",
              {"/srv/a\rb\fc\vd"}},
             {"mounted from nothing", ext4Root + "30 29 0:60 / /home rw - zfs  rw\n", {"/home"}},
             {"subvolumes, and their common top shown again",
              "29 1 0:25 /@ / rw - btrfs /dev/nvme0n1p2 rw\n"
              "30 29 0:26 /@home /home rw - btrfs /dev/nvme0n1p2 rw\n"
              "31 29 0:25 / /btrfs-top rw - btrfs /dev/nvme0n1p2 rw\n",
              {"/home"}},
             {"bound folder is no disk of its own",
              ext4Root + "30 29 8:2 /var/www /home/ann/site rw - ext4 /dev/sda2 rw\n",
              {}},
             {"network, memory, containers, plugged in, packages",
              ext4Root + "30 29 0:50 / /home/ann/nas rw - nfs4 nas:/x rw\n"
                         "31 29 0:51 / /tmp rw - tmpfs tmpfs rw\n"
                         "32 29 0:52 / /var/lib/docker/overlay2/x/merged rw - overlay overlay rw\n"
                         "33 29 8:33 / /opt/stick rw - ext4 /dev/sdc1 rw\n"
                         "34 29 8:34 / /media/ann/disk rw - ext4 /dev/sdd1 rw\n"
                         "35 29 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro\n"
                         "36 29 0:53 / /home/ann/mnt rw - fuse.sshfs host: rw\n",
              {}},
             {"what is mounted over it hides it",
              ext4Root + "30 29 8:3 / /home rw - ext4 /dev/sda3 rw\n31 30 0:60 / /home rw - tmpfs tmpfs rw\n",
              {}},
             {"root in memory, lines cut off",
              "29 1 0:20 / / rw - overlay overlay rw\n30 29 8:3 / /home rw - ext4 /dev/sda3 rw\n31 29 8:4 /\n"
              "32 29 8:5 / /data rw - ext4\n\n",
              {"/home"}},
         }) {
        EXPECT_EQ(furtherRoots(parseMountTable(table), removable), roots) << machine;
    }
}

TEST(SystemExclusions, onlyWholeAbsoluteLinesCount) {
    EXPECT_THAT(
        systemExclusions("/Users\tUsers\n/usr/local  usr/local\n/ x\nrelative x\n/a/../b x\n/one\n/a b c\n"
                         "/last\tlast"),
        ElementsAre("/System/Volumes", "/Users", "/Volumes", "/dev", "/last", "/usr/local"));
}

TEST(DiskRoots, dataVolumeComesBeforeTheSystem) {
    DiskVolumes volumes{.dataVolume = true, .firmlinks = "/Users\tUsers\n", .further = {}};
    EXPECT_THAT(diskRoots(std::nullopt, volumes),
                ElementsAre(DiskRoot{"/System/Volumes/Data", false}, DiskRoot{"/", true}));
    EXPECT_THAT(diskRoots("/Users/ann", volumes), ElementsAre(DiskRoot{"/Users/ann", false}));
    const auto isEmpty = [&](const char* root) { return exclusionsOf({root, false}, volumes)->empty(); };
    EXPECT_TRUE(isEmpty("/System/Volumes/Data"));
    EXPECT_TRUE(isEmpty("/System/Volumes/Data/Users"));
    EXPECT_TRUE(isEmpty("/Users"));
    EXPECT_TRUE(isEmpty("/usrlocal"));
    for (const char* root : {"/", "/System", "/System/Library", "/usr", "/usr/bin"})
        EXPECT_TRUE(exclusionsOf({root, true}, volumes)->contains("/Users")) << root;
    // Without the table the user's data could count twice.
    volumes.firmlinks.reset();
    EXPECT_EQ(exclusionsOf({"/", true}, volumes), std::nullopt);
    EXPECT_EQ(displayPath("/System/Volumes/Data"), "/");
    EXPECT_EQ(displayPath("/System/Volumes/Data/Users/ann"), "/Users/ann");
    EXPECT_EQ(displayPath("/System/Volumes/Database"), "/System/Volumes/Database");
}

TEST(DiskRoots, furtherRootsAreLeftToTheirOwnWalk) {
    const DiskVolumes volumes{.dataVolume = false, .firmlinks = {}, .further = {"/home", "/srv"}};
    EXPECT_THAT(diskRoots(std::nullopt, volumes),
                ElementsAre(DiskRoot{"/"}, DiskRoot{"/home"}, DiskRoot{"/srv"}));
    EXPECT_THAT(*exclusionsOf({"/", false}, volumes), ElementsAre("/home", "/srv"));
    EXPECT_THAT(*exclusionsOf({"/home", false}, volumes), ElementsAre("/srv"));
}

} // namespace
} // namespace varnet

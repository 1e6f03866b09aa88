#include "VarnetApp/Previews/Previews.h"

#include "VarnetApp/Previews/Screens.h"
#include "VarnetApp/Previews/WholeDiskScreens.h"

#include <QTemporaryDir>

#include <cstdio>
#include <utility>
#include <vector>

namespace varnet {

namespace {

std::vector<Picture> screensBeginning(const QString& name) {
    std::vector<Picture> pictures;
    for (Picture& picture : screens())
        if (picture.name.startsWith(name)) pictures.push_back(std::move(picture));
    return pictures;
}

int write(const std::vector<Picture>& pictures, const std::filesystem::path& folder,
          const QString& language) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        std::fprintf(stderr, "varnet: %s cannot be made: %s\n", folder.c_str(), error.message().c_str());
        return 1;
    }
    bool complete = true;
    for (const Picture& picture : pictures) {
        for (const Look look : {Look::dark, Look::light}) {
            for (const int scale : {1, 2}) {
                const QString file = picture.name + (look == Look::dark ? "-dark" : "-light") +
                                     (scale == 2 ? "@2x.png" : ".png");
                const std::filesystem::path path = folder / file.toStdString();
                const QImage image = paint(picture, look, scale, language);
                const bool written = !image.isNull() && image.save(QString::fromStdString(path.string()));
                if (!written) std::fprintf(stderr, "varnet: %s was not written\n", path.c_str());
                complete = complete && written;
            }
        }
    }
    return complete ? 0 : 1;
}

} // namespace

int Previews::render(const std::filesystem::path& folder, const QString& language, const QString& only) {
    return write(screensBeginning(only), folder, language);
}

int Previews::renderStorage(const std::filesystem::path& folder, const QString& language) {
    std::vector<Picture> pictures = screensBeginning("storage");
    for (Picture& picture : screensBeginning("disk"))
        pictures.push_back(std::move(picture));
    const QTemporaryDir tree;
    std::vector<Picture> measured;
    if (tree.isValid()) measured = measuredDiskScreens(tree.path().toStdString());
    if (measured.empty()) std::fputs("varnet: no tree of files could be measured\n", stderr);
    for (Picture& picture : measured)
        pictures.push_back(std::move(picture));
    const int status = write(pictures, folder, language);
    return measured.empty() ? 1 : status;
}

} // namespace varnet

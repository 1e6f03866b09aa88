#include "VarnetApp/Previews/Previews.h"

#include "VarnetApp/Previews/Screens.h"

#include <cstdio>

namespace varnet {

int Previews::render(const std::filesystem::path& folder, const QString& language, const QString& only) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        std::fprintf(stderr, "varnet: %s cannot be made: %s\n", folder.c_str(), error.message().c_str());
        return 1;
    }
    bool complete = true;
    for (const Picture& picture : screens()) {
        if (!picture.name.startsWith(only)) continue;
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

} // namespace varnet

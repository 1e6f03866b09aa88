// Writes what a package holds beside the program and what code of ours makes: icons, completions, the
// manual's options, the autostart entry. Needs no display.
//
// Usage: varnet_package_parts FOLDER

#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetApp/Platform/linux/AutostartEntry.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgGenerator>
#include <QSvgRenderer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "packaging/PackageTexts.h"

namespace {

using varnet::FlameExpression;
using varnet::MascotStyle;

constexpr const char* name = "com.varnet.Varnet";
constexpr const char* installedProgram = "/usr/bin/varnet";
constexpr FlameExpression face = FlameExpression::smug;

/// Whether two pictures of one size show the same but for their edges: not all that can be painted can be
/// drawn.
bool alike(const QImage& one, const QImage& other) {
    constexpr int shade = 32;
    int apart = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            const int difference = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                             std::abs(qBlue(a) - qBlue(b))});
            if (difference > shade) ++apart;
        }
    }
    return apart * 100 < one.width() * one.height();
}

class Folder {
public:
    explicit Folder(QString path) : path_(std::move(path)) {}

    bool complete() const { return complete_; }

    void write(const QString& file, const std::string& text) {
        QFile out(place(file));
        const QByteArray bytes = QByteArray::fromStdString(text);
        note(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size(), file);
    }
    void write(const QString& file, const QImage& image) { note(image.save(place(file), "PNG"), file); }

    /// A drawing that stays sharp at every size, by the same painting as the others.
    template <typename Paint>
    void draw(const QString& file, int side, const Paint& paint) {
        const QRect box(0, 0, side, side);
        {
            QSvgGenerator generator;
            generator.setFileName(place(file));
            generator.setSize(box.size());
            generator.setViewBox(box);
            generator.setTitle("Varnet");
            generator.setDescription("A flame");
            QPainter painter(&generator);
            paint(painter, box);
        }
        QImage drawn(box.size(), QImage::Format_ARGB32_Premultiplied);
        QImage painted = drawn;
        for (QImage* const image : {&drawn, &painted})
            image->fill(Qt::white);
        {
            QPainter painter(&drawn);
            QSvgRenderer(place(file)).render(&painter, box);
        }
        {
            QPainter painter(&painted);
            paint(painter, box);
        }
        note(alike(drawn, painted), file);
    }

private:
    QString place(const QString& file) const {
        const QString whole = path_ + '/' + file;
        QDir().mkpath(QFileInfo(whole).path());
        return whole;
    }
    void note(bool written, const QString& file) {
        if (!written)
            std::fprintf(stderr, "%s is missing or shows something else\n", qPrintable(place(file)));
        complete_ = complete_ && written;
    }

    const QString path_;
    bool complete_ = true;
};

void writeIcons(Folder& folder) {
    for (const int side : {16, 22, 24, 32, 48, 64, 96, 128, 256, 512}) {
        folder.write(QStringLiteral("icons/%1x%1/apps/%2.png").arg(side).arg(name),
                     varnet::mascotImage(face, side, MascotStyle::tile));
    }
    folder.draw(QStringLiteral("icons/scalable/apps/%1.svg").arg(name), 512,
                [](QPainter& painter, const QRectF& box) { varnet::paintFlameTile(painter, box, face); });
    folder.draw(QStringLiteral("icons/symbolic/apps/%1-symbolic.svg").arg(name), 128,
                [](QPainter& painter, const QRectF& box) {
                    varnet::paintSymbolicMascot(painter, box, face, QColor(0x2e, 0x34, 0x36));
                });
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("Usage: varnet_package_parts FOLDER\n", stderr);
        return 2;
    }
    Folder folder(QString::fromLocal8Bit(argv[1]));
    writeIcons(folder);
    folder.write("varnet.bash", varnet::PackageTexts::bashCompletion());
    folder.write("_varnet", varnet::PackageTexts::zshCompletion());
    folder.write("varnet.fish", varnet::PackageTexts::fishCompletion());
    folder.write("options.man", varnet::PackageTexts::manualOptions());
    folder.write(QStringLiteral("autostart/%1.desktop").arg(name),
                 varnet::platform::autostartEntryText(installedProgram));
    return folder.complete() ? 0 : 1;
}

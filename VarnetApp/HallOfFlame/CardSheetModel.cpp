#include "VarnetApp/HallOfFlame/CardSheetModel.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QSaveFile>
#include <QStandardPaths>

namespace varnet {

namespace {

bool writePng(const QImage& image, const QString& path) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
}

} // namespace

double CardSheetModel::aspect() const {
    return static_cast<double>(cardSize().height()) / cardSize().width();
}

QUrl CardSheetModel::suggestedFile() const {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (!QFileInfo(folder).isDir()) folder = QDir::homePath();
    return QUrl::fromLocalFile(folder + '/' + suggestedName());
}

void CardSheetModel::rebuild() {
    image_ = rendered();
    description_ = described();
    emit changed();
    tell(image_.isNull() ? "Could not render this report." : "", image_.isNull());
}

void CardSheetModel::release() {
    image_ = {};
}

void CardSheetModel::save(const QUrl& file) {
    QString path = file.toLocalFile();
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) path += ".png";
    if (image_.isNull() || path.isEmpty() || !writePng(image_, path)) {
        cannotSave();
        return;
    }
    tell({}, false);
}

void CardSheetModel::cannotSave() {
    tell("Couldn’t save this image.", true);
}

void CardSheetModel::copy() {
    QClipboard* const clipboard = QGuiApplication::clipboard();
    if (clipboard && !image_.isNull()) clipboard->setImage(image_);
    const QMimeData* const held = clipboard && !image_.isNull() ? clipboard->mimeData() : nullptr;
    const bool copied = held && held->hasImage();
    tell(copied ? "Image copied." : "Could not copy this report.", !copied);
}

void CardSheetModel::tell(const QString& message, bool failed) {
    message_ = message;
    failed_ = failed;
    emit messageChanged();
}

} // namespace varnet

#include "VarnetApp/Application/DockFlame.h"

#include "VarnetApp/AppStore/StoreSettings.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include <cstring>

namespace varnet {

namespace {

constexpr int fastest = 1; // of zlib's levels; a flame's plain surfaces get small with any

/// The images of all states would be 7 MB for the one on show.
QByteArray packed(const QImage& image) {
    QByteArray bytes = qCompress(image.constBits(), static_cast<int>(image.sizeInBytes()), fastest);
    bytes.squeeze(); // it has room for the worst case
    return bytes;
}

QImage unpacked(const QByteArray& bytes) {
    const QByteArray pixels = qUncompress(bytes);
    QImage image(DockFlame::iconPixels, DockFlame::iconPixels, QImage::Format_ARGB32_Premultiplied);
    if (pixels.size() != image.sizeInBytes()) return {};
    std::memcpy(image.bits(), pixels.constData(), static_cast<std::size_t>(pixels.size()));
    return image;
}

} // namespace

DockFlame::DockFlame(StoreSettings& settings, QObject* parent) : QObject(parent), settings_(settings) {}

bool DockFlame::dynamic() const {
    return settings_.dynamicDockFlame();
}

void DockFlame::setDynamic(bool dynamic) {
    settings_.setDynamicDockFlame(dynamic);
    render();
    emit settingsChanged();
    emit faceChanged();
}

bool DockFlame::keepInDock() const {
    return settings_.keepInDock();
}

void DockFlame::setKeepInDock(bool keep) {
    settings_.setKeepInDock(keep);
    refreshPresence();
    emit settingsChanged();
}

void DockFlame::update(const MonitorSnapshot& snapshot) {
    const DockFlameState next = machine_.update(snapshot);
    if (next != state_) {
        state_ = next;
        emit faceChanged();
    }
    render();
}

void DockFlame::render() {
    if (!dynamic()) {
        if (displayed_ && setApplicationIcon) setApplicationIcon({});
        displayed_.reset();
        return;
    }
    if (presence_ != Presence::regular || displayed_ == state_) return;
    auto held = cache_.find(state_);
    if (held == cache_.end()) {
        const QImage drawn = mascotImage(expression(state_), iconPixels, MascotStyle::tile);
        held = cache_.emplace(state_, packed(drawn)).first;
    }
    if (setApplicationIcon) setApplicationIcon(unpacked(held->second));
    displayed_ = state_;
}

void DockFlame::renderAnew() {
    displayed_.reset();
    render();
}

void DockFlame::refreshPresence() {
    const bool open = hasMainWindow && hasMainWindow();
    presence_ = !open && !keepInDock() ? Presence::accessory : Presence::regular;
    emit presenceChanged();
    render();
}

FlameExpression DockFlame::trayExpression() const {
    return dynamic() ? expression(state_) : FlameExpression::smug;
}

} // namespace varnet

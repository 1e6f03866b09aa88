#include "VarnetApp/Platform/linux/StatusNotifierItem.h"

#include <utility>

namespace varnet::platform {

StatusNotifierItem::StatusNotifierItem(const QString& address) : bus_(BusConnection::open(address)) {
    // Queued, so that the host has its answer before anything is opened, or the program ended.
    QObject::connect(
        &object_, &NotifierObject::activated, this,
        [this](int x, int y) {
            if (handlers_.activated) {
                handlers_.activated(x, y);
            }
        },
        Qt::QueuedConnection);
    QObject::connect(
        &object_, &NotifierObject::activationToken, this,
        [this](const QString& token) {
            if (handlers_.activationToken) {
                handlers_.activationToken(token.toStdString());
            }
        },
        Qt::QueuedConnection);
    QObject::connect(
        &menu_, &TrayMenu::chosen, this,
        [this](int id) {
            if (handlers_.menuChosen) {
                handlers_.menuChosen(id);
            }
        },
        Qt::QueuedConnection);
}

StatusNotifierItem::~StatusNotifierItem() = default;

void StatusNotifierItem::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
    if (!bus_ || host_) {
        return;
    }
    menu_.publish(**bus_);
    object_.publish(**bus_);
    host_.emplace(*bus_);
    QObject::connect(&*host_, &TrayHost::hostedChanged, this, [this](bool hosted) {
        if (handlers_.hostedChanged) {
            handlers_.hostedChanged(hosted);
        }
    });
    host_->enter();
}

void StatusNotifierItem::setIcon(std::vector<TrayImage> images) {
    object_.setIcon(trayPixmaps(images));
}

void StatusNotifierItem::setTitle(const std::string& title) {
    object_.setTitle(QString::fromStdString(title));
}

void StatusNotifierItem::setToolTip(const std::string& title, const std::string& text) {
    object_.setToolTip({{}, {}, QString::fromStdString(title), QString::fromStdString(text).toHtmlEscaped()});
}

void StatusNotifierItem::setLabel(const std::string& text, const std::string& guide) {
    object_.setLabel(QString::fromStdString(text), QString::fromStdString(guide));
}

void StatusNotifierItem::setAccessibleDescription(const std::string& description) {
    object_.setAccessibleDescription(QString::fromStdString(description));
}

void StatusNotifierItem::setMenu(std::vector<TrayMenuEntry> entries) {
    menu_.set(std::move(entries));
}

std::unique_ptr<TrayItem> makeTrayItem() {
    return std::make_unique<StatusNotifierItem>(sessionBusAddress());
}

} // namespace varnet::platform

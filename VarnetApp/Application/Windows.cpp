#include "VarnetApp/Application/Windows.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Localization/AppLocalization.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QSettings>

#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace varnet {

namespace {

constexpr QSize mainSize{1040, 720};
constexpr QSize leastMainSize{720, 520};
constexpr int panelWidth = 340;
constexpr int panelMargin = 8; ///< pixels between the panel and the screen's edge
/// From a change of page or windows to the return of memory, first when what was left has been deleted
/// (somebody who walks along the pages feels nothing), then when what is measured anew has moved into the
/// gaps.
constexpr std::chrono::seconds afterLeaving{2};
constexpr std::chrono::seconds afterMoving{10};
/// A development aid: with it set, each frame that a window shows is told on standard error.
constexpr const char* timesVariable = "VARNET_FRAME_TIMES";
constexpr const char* frameKey = "VarnetMainWindow";

bool shows(const QWindow* window) {
    return window && window->isVisible() && !(window->windowStates() & Qt::WindowMinimized) &&
           window->isExposed();
}

} // namespace

Windows::Windows(ViewContext& context, DockFlame& flame, QSettings* defaults, QObject* parent)
    : QObject(parent), context_(context), flame_(flame), defaults_(defaults) {
    flame_.hasMainWindow = [this] { return main_ && main_->isVisible(); };
    soon_.setSingleShot(true);
    soon_.setInterval(afterLeaving);
    later_.setSingleShot(true);
    later_.setInterval(afterMoving);
    for (const QTimer* const timer : {&soon_, &later_})
        connect(timer, &QTimer::timeout, this, &Windows::giveMemoryBack);
    connect(&context_.store, &VarnetStore::pageChanged, this, &Windows::giveMemoryBackSoon);
}

Windows::~Windows() {
    flame_.hasMainWindow = {};
    destroy(main_);
    destroy(panel_);
    for (Beside* const window : beside_)
        destroy(window->view);
}

void Windows::destroy(QPointer<QQuickView>& view) {
    QQuickView* const gone = view;
    if (!gone) return;
    // What a window says while it goes must not be heard: it is no view any more by then.
    view.clear();
    gone->removeEventFilter(this);
    delete gone;
}

bool Windows::anyVisible() const {
    return shows(main_) || shows(panel_) ||
           std::ranges::any_of(beside_, [](const Beside* window) { return shows(window->view); });
}

QQuickView* Windows::makeView(const QString& type, const QString& title) {
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        context_.give(*engine_);
    }
    auto* const view = new QQuickView(engine_.get(), nullptr);
    const auto name = [this, view, title] { view->setTitle(context_.localization.text(title)); };
    name();
    connect(&context_.localization, &AppLocalization::languageChanged, view, name);
    view->setIcon(icon_);
    view->setColor(Theme::shared().bg());
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->setSource(QUrl("qrc:/qt/qml/Varnet/" + type + ".qml"));
    for (const QQmlError& error : view->errors())
        qWarning("%s", qPrintable(error.toString()));
    view->installEventFilter(this);
    if (qEnvironmentVariableIsSet(timesVariable)) {
        connect(view, &QQuickWindow::frameSwapped, view, [type] {
            timespec now{};
            clock_gettime(CLOCK_MONOTONIC, &now);
            std::fprintf(stderr, "frame %s %.6f\n", qPrintable(type),
                         static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9);
        });
    }
    connect(&Theme::shared(), &Theme::changed, view, [view] { view->setColor(Theme::shared().bg()); });
    return view;
}

void Windows::showView(QQuickView& view) {
    if (!activationToken_.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", activationToken_.toUtf8());
        activationToken_.clear();
    }
    if (view.windowStates() & Qt::WindowMinimized) {
        view.showNormal();
    } else {
        view.show();
    }
    view.raise();
    view.requestActivate();
}

void Windows::openMain() {
    closePanel();
    VarnetStore& store = context_.store;
    if (!main_) {
        main_ = makeView("MainWindow", "Varnet?");
        main_->setMinimumSize(leastMainSize);
        restoreFrame(*main_);
    }
    store.mainVisible = true;
    store.publishLatest();
    flame_.setPresence(DockFlame::Presence::regular);
    showView(*main_);
    flame_.renderAnew();
    giveMemoryBackSoon();
    emit visibilityChanged();
}

void Windows::openBeside(Beside& window) {
    closePanel();
    if (!window.view) {
        window.view = makeView(window.type, window.title);
        window.view->resize(window.size);
        window.view->setMinimumSize(window.least);
        window.view->setFlag(Qt::Dialog);
    }
    context_.store.publishLatest();
    showView(*window.view);
    emit visibilityChanged();
}

void Windows::openSettings() {
    context_.store.settingsVisible = true;
    openBeside(settings_);
}

void Windows::openCloud() {
    openBeside(cloud_);
}

void Windows::openFeedback() {
    openBeside(feedback_);
}

void Windows::togglePanel(std::optional<QPoint> near) {
    if (panel_) {
        closePanel();
        return;
    }
    context_.store.panelVisible = true;
    context_.store.publishLatest();
    panel_ = makeView("MenuPanel", "Varnet");
    panel_->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    const auto fit = [this, near] {
        const QQuickItem* const root = panel_ ? panel_->rootObject() : nullptr;
        if (!root) return;
        const QScreen* screen = near ? QGuiApplication::screenAt(*near) : nullptr;
        if (!screen) screen = QGuiApplication::primaryScreen();
        const QRect space =
            screen->availableGeometry().adjusted(panelMargin, panelMargin, -panelMargin, -panelMargin);
        const QSize size(panelWidth, std::min(static_cast<int>(root->implicitHeight()), space.height()));
        QPoint corner = space.center() - QPoint(size.width() / 2, size.height() / 2);
        if (near) {
            // Away from the edge that the tray is at.
            const bool below = near->y() < space.center().y();
            corner = {near->x() - size.width() / 2,
                      below ? near->y() + panelMargin : near->y() - panelMargin - size.height()};
        }
        corner.setX(
            std::clamp(corner.x(), space.left(), std::max(space.left(), space.right() - size.width())));
        corner.setY(
            std::clamp(corner.y(), space.top(), std::max(space.top(), space.bottom() - size.height())));
        panel_->setGeometry(QRect(corner, size));
    };
    fit();
    if (const QQuickItem* const root = panel_->rootObject())
        connect(root, &QQuickItem::implicitHeightChanged, panel_.data(), fit);
    showView(*panel_);
    emit visibilityChanged();
}

void Windows::closePanel() {
    if (!panel_) return;
    context_.store.panelVisible = false;
    drop(panel_);
}

void Windows::drop(QPointer<QQuickView>& view) {
    if (!view) return;
    view->removeEventFilter(this);
    view->hide();
    view->deleteLater();
    view.clear();
    emit visibilityChanged();
    // After the view itself has gone.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (main_ || panel_ ||
                std::ranges::any_of(beside_, [](const Beside* window) { return bool(window->view); }))
                return;
            engine_.reset();
            giveMemoryBack();
        },
        Qt::QueuedConnection);
    giveMemoryBackSoon();
}

void Windows::giveMemoryBackSoon() {
    soon_.start();
    later_.start();
}

void Windows::giveMemoryBack() {
    if (engine_) engine_->collectGarbage();
    malloc_trim(0);
}

bool Windows::closeMain() {
    saveFrame();
    if (!trayReachable_ || flame_.keepInDock()) {
        main_->showMinimized();
        return false;
    }
    context_.store.mainVisible = false;
    drop(main_);
    flame_.refreshPresence();
    return true;
}

void Windows::setStaysReachable(bool reachable) {
    trayReachable_ = reachable;
}

void Windows::setIcon(const QIcon& icon) {
    icon_ = icon;
    for (const QPointer<QQuickView>& view : {main_, panel_})
        if (view) view->setIcon(icon);
    for (const Beside* const window : beside_)
        if (window->view) window->view->setIcon(icon);
}

bool Windows::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == main_ && type == QEvent::Close) {
        event->ignore();
        closeMain();
        return true;
    }
    for (Beside* const window : beside_) {
        if (watched != window->view || type != QEvent::Close) continue;
        event->ignore();
        if (window == &settings_) context_.store.settingsVisible = false;
        drop(window->view);
        return true;
    }
    if (watched == panel_ && (type == QEvent::Close || type == QEvent::FocusOut)) {
        closePanel();
        return true;
    }
    if (type == QEvent::Expose || type == QEvent::WindowStateChange || type == QEvent::Hide)
        emit visibilityChanged();
    return QObject::eventFilter(watched, event);
}

void Windows::restoreFrame(QQuickView& view) const {
    QRect frame = defaults_ ? defaults_->value(frameKey).toRect() : QRect();
    // A frame from a screen that has gone is no frame.
    const bool usable = frame.isValid() && QGuiApplication::screenAt(frame.center());
    if (!usable) {
        view.resize(mainSize);
        return;
    }
    frame.setSize(frame.size().expandedTo(leastMainSize));
    view.setGeometry(frame);
}

void Windows::saveFrame() const {
    if (defaults_ && main_ && main_->visibility() == QWindow::Windowed)
        defaults_->setValue(frameKey, main_->geometry());
}

} // namespace varnet

#pragma once

#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QIcon>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickView>
#include <QSize>
#include <QString>
#include <QTimer>

#include <array>
#include <memory>
#include <optional>

class QSettings;

namespace varnet {

/// The program's windows: the main one, the panel by the tray, and those beside them: settings, the account
/// and what the user writes to the makers. The QML engine exists while one of them does, and what was open
/// leaves nothing behind but its frame. Main thread only.
class Windows : public QObject {
    Q_OBJECT

public:
    /// @param context outlives this
    /// @param defaults where the main window's frame is kept, outlives this; null: nowhere
    Windows(ViewContext& context, DockFlame& flame, QSettings* defaults, QObject* parent = nullptr);
    ~Windows() override;

    /// Opens the main window, or raises the one that is open.
    void openMain();
    void openSettings();
    void openCloud();
    void openFeedback();
    /// Opens the panel near a point of the screen, or closes the one that is open.
    /// @param near pixels of the screen; empty: not known, the panel goes to the middle
    void togglePanel(std::optional<QPoint> near);
    void closePanel();

    /// Whether some window can show live data right now.
    bool anyVisible() const;
    /// Whether the main window is open, seen or not.
    bool mainIsOpen() const { return main_ != nullptr; }

    /// Lets the next window to open take the focus where the desktop asks for a token.
    void setActivationToken(const QString& token) { activationToken_ = token; }
    /// Closing the main window minimises it: there is nothing else that the program could be reached by.
    void setStaysReachable(bool reachable);
    void setIcon(const QIcon& icon);

signals:
    void visibilityChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A window beside the main one, that is open once at most.
    struct Beside {
        const char* type;
        const char* title;
        QSize size;
        QSize least;
        QPointer<QQuickView> view = {}; ///< null: not open
    };

    QQuickView* makeView(const QString& type, const QString& title);
    void openBeside(Beside& window);
    void showView(QQuickView& view);
    bool closeMain();
    /// Closes it; it is deleted when the events of now have been handled.
    void drop(QPointer<QQuickView>& view);
    void destroy(QPointer<QQuickView>& view);
    void giveMemoryBack();
    void giveMemoryBackSoon();
    void restoreFrame(QQuickView& view) const;
    void saveFrame() const;

    // Constant after construction.
    ViewContext& context_;
    DockFlame& flame_;
    QSettings* const defaults_;

    std::unique_ptr<QQmlEngine> engine_; ///< null while no window exists
    QTimer soon_;                        ///< runs from a change of page or windows until memory is given back
    QTimer later_;                       ///< the same, for a second time
    QPointer<QQuickView> main_;
    QPointer<QQuickView> panel_;
    Beside settings_{"SettingsView", "Settings", {640, 720}, {480, 400}};
    Beside cloud_{"CloudView", "Cloud backup", {600, 680}, {440, 400}};
    Beside feedback_{"FeedbackView", "Send feedback", {520, 560}, {400, 440}};
    const std::array<Beside*, 3> beside_{&settings_, &cloud_, &feedback_};
    QIcon icon_;
    QString activationToken_;
    bool trayReachable_ = false;
};

} // namespace varnet

#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/UtilityViews/PanelRows.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

#include <string>
#include <vector>

namespace varnet {

/// Stands behind the panel by the tray, for as long as that is open.
class PanelModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// "Version 1.4.0 available"; empty: there is no update.
    Q_PROPERTY(QString update READ update NOTIFY changed)
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    /// The mascot's face.
    Q_PROPERTY(QString expression READ expression NOTIFY changed)
    Q_PROPERTY(QString cpu READ cpu NOTIFY changed)
    Q_PROPERTY(QString memory READ memory NOTIFY changed)
    /// How full the figures' bars are, 0 to 1.
    Q_PROPERTY(double cpuShare READ cpuShare NOTIFY changed)
    Q_PROPERTY(double memoryShare READ memoryShare NOTIFY changed)
    /// Why there are no current readings; empty: there are.
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool failed READ failed NOTIFY changed)
    Q_PROPERTY(QString findingCount READ findingCount NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* findings READ findings CONSTANT)
    Q_PROPERTY(QAbstractItemModel* topGroups READ topGroups CONSTANT)

public:
    using ViewModel::ViewModel;

    QString update() const { return shown_.update; }
    bool canCheckForUpdates() const { return shown_.canCheckForUpdates; }
    QString headline() const { return shown_.headline; }
    QString expression() const { return shown_.expression; }
    QString cpu() const { return shown_.cpu; }
    QString memory() const { return shown_.memory; }
    double cpuShare() const { return shown_.cpuShare; }
    double memoryShare() const { return shown_.memoryShare; }
    QString notice() const { return shown_.notice; }
    bool failed() const { return shown_.failed; }
    QString findingCount() const { return shown_.findingCount; }
    QAbstractItemModel* findings() { return &findings_; }
    QAbstractItemModel* topGroups() { return &groups_; }

    Q_INVOKABLE void inspectFinding(const QString& key);
    Q_INVOKABLE void inspectGroup(const QString& key);
    Q_INVOKABLE void shareReport();
    Q_INVOKABLE void openOverview();
    Q_INVOKABLE void openSettings();
    Q_INVOKABLE void openUpdate();
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void sendFeedback();
    Q_INVOKABLE void quit();
    Q_INVOKABLE void close();

signals:
    void changed();

protected:
    void begin() override;

private:
    struct Shown {
        QString update;
        bool canCheckForUpdates = false;
        QString headline;
        QString expression;
        QString cpu;
        QString memory;
        double cpuShare = 0;
        double memoryShare = 0;
        QString notice;
        bool failed = false;
        QString findingCount;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();
    Shown read() const;
    void ask(void (AppUpdater::*what)());

    std::vector<std::string> pinnedOrder_; ///< ids; empty: the first groups are shown
    Shown shown_;
    KeyedListModel<PanelFinding> findings_;
    KeyedListModel<PanelGroup> groups_;
};

} // namespace varnet

#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/DetailInspector/DetailRows.h"
#include "VarnetApp/DetailInspector/DetailTexts.h"
#include "VarnetApp/MainViews/RowTile.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace varnet {

struct ApplicationGroup;
struct MonitorSnapshot;
struct Service;

/// Stands behind the inspector: what it shows of the selected group or service. Main thread only.
class DetailModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// Something is selected.
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    /// What is selected has gone; nothing but the title bar's button is left.
    Q_PROPERTY(bool gone READ isGone NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
    /// Name of a Theme colour.
    Q_PROPERTY(QString barTone READ barTone NOTIFY changed)
    /// As RowTile's.
    Q_PROPERTY(QString tileTone READ tileTone NOTIFY changed)
    Q_PROPERTY(QString tileLetter READ tileLetter NOTIFY changed)
    Q_PROPERTY(QString tileIcon READ tileIcon NOTIFY changed)
    /// A finding about it; empty: none.
    Q_PROPERTY(QString findingTitle READ findingTitle NOTIFY changed)
    Q_PROPERTY(QString findingText READ findingText NOTIFY changed)
    Q_PROPERTY(QString findingIcon READ findingIcon NOTIFY changed)
    Q_PROPERTY(QString cpu READ cpu NOTIFY changed)
    Q_PROPERTY(QString memory READ memory NOTIFY changed)
    /// Of the whole machine's, 0 to 1.
    Q_PROPERTY(double cpuShare READ cpuShare NOTIFY changed)
    Q_PROPERTY(double memoryShare READ memoryShare NOTIFY changed)
    Q_PROPERTY(QString cpuHelp READ cpuHelp CONSTANT)
    Q_PROPERTY(QString memoryHelp READ memoryHelp CONSTANT)
    Q_PROPERTY(QString cpuNote READ cpuNote CONSTANT)
    Q_PROPERTY(bool isService READ isService NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* facts READ facts CONSTANT)
    Q_PROPERTY(QAbstractItemModel* addresses READ addresses CONSTANT)
    /// Empty: servers are not told of here.
    Q_PROPERTY(QString serversText READ serversText NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* servers READ servers CONSTANT)
    Q_PROPERTY(bool canShowApp READ canShowApp NOTIFY changed)
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    Q_PROPERTY(QString worktree READ worktree NOTIFY changed)
    Q_PROPERTY(QString detailsTitle READ detailsTitle NOTIFY changed)
    Q_PROPERTY(QString processesTitle READ processesTitle NOTIFY changed)
    Q_PROPERTY(bool showProcesses MEMBER showProcesses_ WRITE setShowProcesses NOTIFY showProcessesChanged)
    Q_PROPERTY(QAbstractItemModel* processes READ processes CONSTANT)
    /// Of the button that stops it; empty: there is none.
    Q_PROPERTY(QString stopTitle READ stopTitle NOTIFY changed)
    Q_PROPERTY(bool stoppable READ stoppable NOTIFY changed)
    Q_PROPERTY(QString stopHelp READ stopHelp NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return isOpen_; }
    bool isGone() const { return shown_.gone; }
    const QString& title() const { return shown_.title; }
    const QString& subtitle() const { return shown_.subtitle; }
    const QString& barTone() const { return shown_.barTone; }
    const QString& tileTone() const { return shown_.tile.tone; }
    const QString& tileLetter() const { return shown_.tile.letter; }
    const QString& tileIcon() const { return shown_.tile.icon; }
    const QString& findingTitle() const { return shown_.findingTitle; }
    const QString& findingText() const { return shown_.findingText; }
    const QString& findingIcon() const { return shown_.findingIcon; }
    const QString& cpu() const { return shown_.cpu; }
    const QString& memory() const { return shown_.memory; }
    double cpuShare() const { return shown_.cpuShare; }
    double memoryShare() const { return shown_.memoryShare; }
    QString cpuHelp() const { return DetailTexts::cpuHelp; }
    QString memoryHelp() const { return DetailTexts::memoryHelp; }
    QString cpuNote() const { return DetailTexts::cpuNote; }
    bool isService() const { return shown_.isService; }
    QAbstractItemModel* facts() { return &facts_; }
    QAbstractItemModel* addresses() { return &addresses_; }
    const QString& serversText() const { return shown_.serversText; }
    QAbstractItemModel* servers() { return &servers_; }
    bool canShowApp() const { return !shown_.applicationPath.isEmpty(); }
    const QString& folder() const { return shown_.folder; }
    const QString& worktree() const { return shown_.worktree; }
    const QString& detailsTitle() const { return shown_.detailsTitle; }
    const QString& processesTitle() const { return shown_.processesTitle; }
    void setShowProcesses(bool shown);
    QAbstractItemModel* processes() { return &processes_; }
    const QString& stopTitle() const { return shown_.stopTitle; }
    bool stoppable() const { return shown_.stoppable; }
    const QString& stopHelp() const { return shown_.stopHelp; }

    Q_INVOKABLE void close();
    Q_INVOKABLE void stop();
    Q_INVOKABLE void stopServer(const QString& key);
    Q_INVOKABLE void openServer(const QString& key);
    Q_INVOKABLE void openInBrowser(int port);
    /// Shows where the application comes from.
    Q_INVOKABLE void showApp();
    Q_INVOKABLE void revealFolder();

signals:
    void openChanged();
    void changed();
    void showProcessesChanged();

private:
    /// Everything but the lists; finished words.
    struct Shown {
        bool gone = false;
        bool isService = false;
        QString title;
        QString subtitle;
        RowTile tile{};
        QString barTone = "faint";
        QString findingTitle;
        QString findingText;
        QString findingIcon;
        QString cpu;
        QString memory;
        double cpuShare = 0;
        double memoryShare = 0;
        QString serversText;
        QString applicationPath;
        QString folder;
        QString worktree;
        QString detailsTitle;
        QString processesTitle;
        QString stopTitle;
        bool stoppable = false;
        QString stopHelp; ///< or why it cannot be stopped

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void begin() override;
    void refresh();
    Shown describe(const ApplicationGroup& group);
    Shown describe(const Service& service);
    void describeUse(Shown& shown, std::optional<double> cpu, std::optional<std::uint64_t> memory) const;
    void describeProject(Shown& shown, const Project* project) const;
    void listProcesses(std::span<const SampleRef> processes);
    const ApplicationGroup* selectedGroup() const;
    const Service* selectedService() const;

    bool isOpen_ = false;
    std::string selected_; ///< what the lists are about
    Shown shown_;
    bool showProcesses_ = false;
    Figures figures_{QLocale::c()};
    KeyedListModel<FactRow> facts_;
    KeyedListModel<AddressRow> addresses_;
    KeyedListModel<DetailServerRow> servers_;
    KeyedListModel<DetailProcessRow> processes_;
};

} // namespace varnet

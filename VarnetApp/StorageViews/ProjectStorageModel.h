#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/StorageViews/StorageLevel.h"
#include "VarnetApp/StorageViews/StorageRows.h"

#include <QStringList>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace varnet {

class DiskStorageStore;

/// Stands behind the page of what projects occupy: figures, map and list, the folders that the user has
/// added, and what the scan says.
class ProjectStorageModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT

    // The scan.
    /// False before the first scan: there is nothing to show yet.
    Q_PROPERTY(bool started MEMBER started_ NOTIFY scanChanged)
    Q_PROPERTY(bool scanning MEMBER scanning_ NOTIFY scanChanged)
    Q_PROPERTY(QString progress MEMBER progress_ NOTIFY progressChanged)
    /// There is no project to show, or none yet.
    Q_PROPERTY(bool bare READ bare NOTIFY scanChanged)
    /// A finished scan has found nothing.
    Q_PROPERTY(bool empty MEMBER empty_ NOTIFY scanChanged)
    /// What could not be measured, and notes of the scan; empty: all is well.
    Q_PROPERTY(bool partial MEMBER partial_ NOTIFY scanChanged)
    Q_PROPERTY(QStringList notes MEMBER notes_ NOTIFY scanChanged)

    // The figures; "—" before there are any.
    Q_PROPERTY(QString allocated MEMBER allocated_ NOTIFY scanChanged)
    Q_PROPERTY(QString toReview MEMBER toReview_ NOTIFY scanChanged)
    Q_PROPERTY(QString projects MEMBER projects_ NOTIFY scanChanged)
    Q_PROPERTY(QString worktrees MEMBER worktrees_ NOTIFY scanChanged)
    Q_PROPERTY(QString measured MEMBER measured_ NOTIFY scanChanged)

    // The map. The way to what it shows, current step last; one step alone is no way.
    Q_PROPERTY(varnet::TreemapModel* map READ map CONSTANT)
    Q_PROPERTY(QStringList crumbs MEMBER crumbs_ NOTIFY levelChanged)
    Q_PROPERTY(QString crumbSize MEMBER crumbSize_ NOTIFY levelChanged)
    /// The map shows one project's buckets, which has details.
    Q_PROPERTY(bool projectOpen MEMBER projectOpen_ NOTIFY levelChanged)
    /// What the map would show weighs nothing yet.
    Q_PROPERTY(bool mapEmpty MEMBER mapEmpty_ NOTIFY levelChanged)

    // The list.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(bool noMatch MEMBER noMatch_ NOTIFY searchChanged)
    /// The list stands alone, the map is away.
    Q_PROPERTY(bool listOnly READ listOnly WRITE setListOnly NOTIFY layoutChanged)

    // Folders that the user has added.
    Q_PROPERTY(QStringList folders READ folders NOTIFY foldersChanged)
    /// Of the folder that the page is restricted to; -1: none.
    Q_PROPERTY(int focusedFolder MEMBER focusedFolder_ NOTIFY foldersChanged)
    /// Empty: none.
    Q_PROPERTY(QString focusName MEMBER focusName_ NOTIFY foldersChanged)

    Q_PROPERTY(QString message MEMBER message_ NOTIFY messageChanged)
    Q_PROPERTY(bool canRevealTrash MEMBER canRevealTrash_ NOTIFY messageChanged)
    /// Prepared data: the message says why nothing can be chosen.
    Q_PROPERTY(bool preview READ preview NOTIFY layoutChanged)

public:
    using ViewModel::ViewModel;

    TreemapModel* map() { return &map_; }
    QAbstractItemModel* rows() { return &rows_; }
    bool bare() const noexcept { return families_.empty(); }
    const QString& search() const { return search_; }
    void setSearch(const QString& search);
    bool listOnly() const;
    void setListOnly(bool alone);
    bool preview() const;
    QStringList folders() const;

    /// What a click on a tile does, or Enter: goes into it, or opens the details where there is no further.
    Q_INVOKABLE void openTile(const QString& key);
    Q_INVOKABLE void goUp();
    Q_INVOKABLE void goTo(int crumb);
    /// Opens the details of the project that the map shows.
    Q_INVOKABLE void openDetails();
    /// What a click on a row does: unfolds a family, opens a project's details.
    Q_INVOKABLE void openRow(const QString& key);
    Q_INVOKABLE void setUnfolded(const QString& key, bool unfolded);
    /// The tile that a row belongs to, and the row of a tile; empty: none.
    Q_INVOKABLE QString tileOf(const QString& rowKey) const;
    Q_INVOKABLE QString rowOf(const QString& tileKey) const;
    Q_INVOKABLE int indexOf(const QString& rowKey) const;

    Q_INVOKABLE void rescan();
    Q_INVOKABLE void stopScan();
    Q_INVOKABLE void addFolder(const QUrl& folder);
    Q_INVOKABLE void removeFolder(int index);
    /// -1: all of them.
    Q_INVOKABLE void focusFolder(int index);
    Q_INVOKABLE void showTrash();
    Q_INVOKABLE void dismissMessage();

signals:
    void scanChanged();
    void progressChanged();
    void levelChanged();
    void searchChanged();
    void layoutChanged();
    void foldersChanged();
    void messageChanged();

protected:
    void begin() override;

private:
    void takeScan();
    void takeState();
    void tellFigures();
    void tellLevel();
    void tellRows();
    void show(StorageLevel level);
    std::optional<std::string> folderAt(int index) const;
    std::vector<std::string> observed() const;
    bool isUnfolded(const std::string& familyID, bool found) const;

    DiskStorageStore* storage_ = nullptr; ///< null until the view is complete, and where there is none
    std::vector<StorageFamily> families_; ///< of the folder in focus
    StorageLevel level_;
    std::vector<StorageCrumb> trail_;
    std::set<std::string> unfolded_;
    std::set<std::string> folded_; ///< among those that the search has unfolded

    bool started_ = false;
    bool scanning_ = false;
    QString progress_;
    bool empty_ = false;
    bool partial_ = false;
    QStringList notes_;
    QString allocated_;
    QString toReview_;
    QString projects_;
    QString worktrees_;
    QString measured_;
    TreemapModel map_;
    QStringList crumbs_;
    QString crumbSize_;
    bool projectOpen_ = false;
    bool mapEmpty_ = true;
    KeyedListModel<StorageRow> rows_;
    QString search_;
    bool noMatch_ = false;
    std::vector<std::string> folders_;
    int focusedFolder_ = -1;
    QString focusName_;
    QString message_;
    bool canRevealTrash_ = false;
};

} // namespace varnet

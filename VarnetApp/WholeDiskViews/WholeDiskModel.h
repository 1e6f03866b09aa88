#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/StorageMap/TreemapModel.h"
#include "VarnetApp/WholeDiskViews/WholeDiskRows.h"
#include "VarnetApp/WholeDiskViews/WholeDiskTexts.h"

#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

class WholeDiskStore;

/// What the whole disk's page shows of its store.
class WholeDiskModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    // The disk.
    Q_PROPERTY(bool hasCapacity MEMBER hasCapacity_ NOTIFY changed)
    Q_PROPERTY(QString diskName MEMBER diskName_ NOTIFY changed)
    Q_PROPERTY(QString used MEMBER used_ NOTIFY changed)
    Q_PROPERTY(QString free MEMBER free_ NOTIFY changed)
    Q_PROPERTY(double usedShare MEMBER usedShare_ NOTIFY changed)

    // The folder.
    Q_PROPERTY(QAbstractItemModel* crumbs READ crumbs CONSTANT)
    /// Crumbs that find room.
    Q_PROPERTY(int crumbRoom READ crumbRoom WRITE setCrumbRoom NOTIFY changed)
    /// Of the folder; empty: not measured.
    Q_PROPERTY(QString size MEMBER size_ NOTIFY changed)
    Q_PROPERTY(varnet::TreemapModel* map READ map CONSTANT)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool hasTiles MEMBER hasTiles_ NOTIFY changed)
    Q_PROPERTY(bool hasRows MEMBER hasRows_ NOTIFY changed)
    /// What the button below the rows says; empty: they are all there.
    Q_PROPERTY(QString more MEMBER more_ NOTIFY changed)
    /// Rows that find room before anybody asks for more.
    Q_PROPERTY(int firstRows READ firstRows WRITE setFirstRows NOTIFY changed)
    /// There are items without a size, so that the choice to show them makes a difference.
    Q_PROPERTY(bool hasEmpty MEMBER hasEmpty_ NOTIFY changed)

    // What the user chooses.
    Q_PROPERTY(bool asList READ asList WRITE setAsList NOTIFY changed)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY changed)
    Q_PROPERTY(bool showEmpty READ showEmpty WRITE setShowEmpty NOTIFY changed)

    // How it stands.
    Q_PROPERTY(bool started MEMBER started_ NOTIFY changed)
    Q_PROPERTY(bool scanning MEMBER scanning_ NOTIFY changed)
    Q_PROPERTY(QString scanLabel MEMBER scanLabel_ NOTIFY changed)
    Q_PROPERTY(QString scanIcon MEMBER scanIcon_ NOTIFY changed)
    Q_PROPERTY(QString itemsChecked MEMBER itemsChecked_ NOTIFY changed)
    Q_PROPERTY(QString noticeIcon READ noticeIcon NOTIFY changed)
    Q_PROPERTY(QString noticeTitle READ noticeTitle NOTIFY changed)
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY changed)
    Q_PROPERTY(bool noticeIsError READ noticeIsError NOTIFY changed)
    Q_PROPERTY(bool noticeIsBusy READ noticeIsBusy NOTIFY changed)
    Q_PROPERTY(bool noticeCanScan READ noticeCanScan NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(bool statusIsError READ statusIsError NOTIFY changed)
    /// How many things below the folder could not be read; empty: all could.
    Q_PROPERTY(QString unreadable MEMBER unreadable_ NOTIFY changed)

public:
    explicit WholeDiskModel(QObject* parent = nullptr);

    QAbstractItemModel* crumbs() { return &crumbs_; }
    QAbstractItemModel* rows() { return &rows_; }
    TreemapModel* map() { return &map_; }
    int crumbRoom() const noexcept { return crumbRoom_; }
    void setCrumbRoom(int count);
    int firstRows() const noexcept { return firstRows_; }
    void setFirstRows(int count);
    bool asList() const noexcept { return asList_; }
    void setAsList(bool list);
    const QString& search() const noexcept { return search_; }
    void setSearch(const QString& search);
    bool showEmpty() const noexcept { return showEmpty_; }
    void setShowEmpty(bool shown);
    const QString& noticeIcon() const noexcept { return notice_.icon; }
    const QString& noticeTitle() const noexcept { return notice_.title; }
    const QString& noticeText() const noexcept { return notice_.text; }
    bool noticeIsError() const noexcept { return notice_.isError; }
    bool noticeIsBusy() const noexcept { return notice_.isBusy; }
    bool noticeCanScan() const noexcept { return notice_.canScan; }
    const QString& status() const noexcept { return status_.text; }
    bool statusIsError() const noexcept { return status_.isError; }

    /// Explores a folder, shows a file in its folder; what stands for many does nothing.
    Q_INVOKABLE void open(const QString& key);
    /// To a step of the way.
    Q_INVOKABLE void goTo(const QString& crumb);
    Q_INVOKABLE void goUp();
    Q_INVOKABLE void showMore();
    /// Scans the disk anew, or stops the scan that runs.
    Q_INVOKABLE void scanOrStop();
    Q_INVOKABLE void openAccessSettings();

signals:
    void changed();
    /// What this user's rights do not reach is to be explained.
    void accessExplanationRequested();

protected:
    void begin() override;

private:
    WholeDiskStore* disk() const;
    void speak();
    void refresh();
    /// The view has found another room for things: not while it lays itself out.
    void refreshSoon();
    void refreshContent(const DiskUsageScan& scan);
    void refreshCapacity();
    void showFolder(std::optional<std::string> path);

    bool begun_ = false;
    bool refreshWaits_ = false;
    TreemapLanguage language_;

    bool hasCapacity_ = false;
    QString diskName_;
    QString used_;
    QString free_;
    double usedShare_ = 0;

    KeyedListModel<DiskCrumb> crumbs_;
    int crumbRoom_ = 5;
    QString size_;
    TreemapModel map_;
    KeyedListModel<DiskRow> rows_;
    bool hasTiles_ = false;
    bool hasRows_ = false;
    QString more_;
    int firstRows_ = 8;
    std::size_t shownRows_ = 0; ///< as many as the user has asked for
    bool hasEmpty_ = false;

    bool asList_ = false;
    QString search_;
    bool showEmpty_ = false;

    bool started_ = false;
    bool scanning_ = false;
    QString scanLabel_;
    QString scanIcon_;
    QString itemsChecked_;
    WholeDiskTexts::Notice notice_;
    WholeDiskTexts::Status status_;
    QString unreadable_;
};

} // namespace varnet

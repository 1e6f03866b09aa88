#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/StorageViews/StorageRows.h"

#include <QtQml/qqmlregistration.h>

#include <set>
#include <string>

namespace varnet {

/// Stands behind the sheet in which folders are chosen and moved to the Trash.
class StorageReviewModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString branch READ branch NOTIFY changed)
    Q_PROPERTY(QString source READ source NOTIFY changed)
    Q_PROPERTY(bool ofAgent READ ofAgent NOTIFY changed)
    Q_PROPERTY(bool worktree READ worktree NOTIFY changed)
    /// Of all candidates; empty when there is nothing.
    Q_PROPERTY(QString toReview READ toReview NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* candidates READ candidates CONSTANT)
    Q_PROPERTY(bool hasCandidates READ hasCandidates NOTIFY changed)
    /// "3 of 4 folders · 7.1 GB".
    Q_PROPERTY(QString chosen READ chosen NOTIFY changed)
    /// The user has said that nothing works in the project any more.
    Q_PROPERTY(bool confirmed READ confirmed WRITE setConfirmed NOTIFY changed)
    Q_PROPERTY(bool canMove READ canMove NOTIFY changed)
    /// Why not, in words for the user.
    Q_PROPERTY(QString reason READ reason NOTIFY changed)
    Q_PROPERTY(bool cleaning READ cleaning NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return shown_.open; }
    const QString& title() const { return shown_.title; }
    const QString& branch() const { return shown_.branch; }
    const QString& source() const { return shown_.source; }
    bool ofAgent() const { return shown_.ofAgent; }
    bool worktree() const { return shown_.worktree; }
    const QString& toReview() const { return shown_.toReview; }
    QAbstractItemModel* candidates() { return &candidates_; }
    bool hasCandidates() const { return candidates_.size() > 0; }
    const QString& chosen() const { return shown_.chosen; }
    bool confirmed() const { return shown_.confirmed; }
    void setConfirmed(bool confirmed);
    bool canMove() const { return shown_.canMove; }
    const QString& reason() const { return shown_.reason; }
    bool cleaning() const { return shown_.cleaning; }

    Q_INVOKABLE void tick(const QString& key, bool ticked);
    Q_INVOKABLE void moveToTrash();
    Q_INVOKABLE void close();

signals:
    void changed();

protected:
    void begin() override;

private:
    struct Shown {
        bool open = false;
        QString title;
        QString branch;
        QString source;
        bool ofAgent = false;
        bool worktree = false;
        QString toReview;
        QString chosen;
        bool confirmed = false;
        bool canMove = false;
        QString reason;
        bool cleaning = false;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();

    Shown shown_;
    std::set<std::string> spared_; ///< paths that the user has taken the tick off
    bool confirmed_ = false;
    KeyedListModel<StorageCandidateRow> candidates_;
};

} // namespace varnet

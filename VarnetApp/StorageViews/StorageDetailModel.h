#pragma once

#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/StorageViews/StorageRows.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the sheet with one project's details.
class StorageDetailModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString size READ size NOTIFY changed)
    Q_PROPERTY(QString path READ path NOTIFY changed)
    Q_PROPERTY(QString source READ source NOTIFY changed)
    Q_PROPERTY(bool ofAgent READ ofAgent NOTIFY changed)
    Q_PROPERTY(bool partial READ partial NOTIFY changed)
    Q_PROPERTY(bool worktree READ worktree NOTIFY changed)
    /// It belongs to a workspace manager.
    Q_PROPERTY(bool managed READ managed NOTIFY changed)
    Q_PROPERTY(QString toReview READ toReview NOTIFY changed)
    Q_PROPERTY(bool hasCandidates READ hasCandidates NOTIFY changed)
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* facts READ facts CONSTANT)
    Q_PROPERTY(QAbstractItemModel* buckets READ buckets CONSTANT)
    Q_PROPERTY(QAbstractItemModel* candidates READ candidates CONSTANT)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return shown_.open; }
    const QString& title() const { return shown_.title; }
    const QString& size() const { return shown_.size; }
    const QString& path() const { return shown_.path; }
    const QString& source() const { return shown_.source; }
    bool ofAgent() const { return shown_.ofAgent; }
    bool partial() const { return shown_.partial; }
    bool worktree() const { return shown_.worktree; }
    bool managed() const { return shown_.managed; }
    const QString& toReview() const { return shown_.toReview; }
    bool hasCandidates() const { return candidates_.size() > 0; }
    bool scanning() const { return shown_.scanning; }
    QAbstractItemModel* facts() { return &facts_; }
    QAbstractItemModel* buckets() { return &buckets_; }
    QAbstractItemModel* candidates() { return &candidates_; }

    Q_INVOKABLE void reveal();
    Q_INVOKABLE void openManager();
    Q_INVOKABLE void review();
    Q_INVOKABLE void close();

signals:
    void changed();

protected:
    void begin() override;

private:
    struct Shown {
        bool open = false;
        QString title;
        QString size;
        QString path;
        QString source;
        bool ofAgent = false;
        bool partial = false;
        bool worktree = false;
        bool managed = false;
        QString toReview;
        bool scanning = false;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void refresh();

    Shown shown_;
    KeyedListModel<StorageFact> facts_;
    KeyedListModel<StorageFact> buckets_;
    KeyedListModel<StorageCandidateRow> candidates_;
};

} // namespace varnet

#pragma once

#include "VarnetApp/BatchActions/SheetRow.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the sheet that reviews the stop of one service or process. Main thread only.
class StopSheetModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString project READ project NOTIFY changed)
    Q_PROPERTY(QString worktree READ worktree NOTIFY changed)
    Q_PROPERTY(QStringList ports READ ports NOTIFY changed)
    Q_PROPERTY(QString agent READ agent NOTIFY changed)
    Q_PROPERTY(bool waiting READ waiting NOTIFY changed)
    Q_PROPERTY(bool finished READ finished NOTIFY changed)
    Q_PROPERTY(bool hasSurvivors READ hasSurvivors NOTIFY changed)
    /// The sentence above the list.
    Q_PROPERTY(QString introduction READ introduction NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return shown_.open; }
    const QString& title() const { return shown_.title; }
    const QString& project() const { return shown_.project; }
    const QString& worktree() const { return shown_.worktree; }
    const QStringList& ports() const { return shown_.ports; }
    const QString& agent() const { return shown_.agent; }
    bool waiting() const { return shown_.waiting; }
    bool finished() const { return shown_.finished; }
    bool hasSurvivors() const { return shown_.hasSurvivors; }
    const QString& introduction() const { return shown_.introduction; }
    QAbstractItemModel* rows() { return &rows_; }

    Q_INVOKABLE void quit();
    Q_INVOKABLE void forceQuit();
    Q_INVOKABLE void close();

signals:
    void changed();

private:
    struct Shown {
        bool open = false;
        QString title;
        QString project;
        QString worktree;
        QStringList ports;
        QString agent;
        bool waiting = false;
        bool finished = false;
        bool hasSurvivors = false;
        QString introduction;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void begin() override;
    void refresh();

    bool forcing_ = false;
    Shown shown_;
    KeyedListModel<SheetRow> rows_;
};

} // namespace varnet

#pragma once

#include "VarnetApp/BatchActions/SheetRow.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the sheet that reviews the stop of a selection. Main thread only.
class BatchStopSheetModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(bool waiting READ waiting NOTIFY changed)
    Q_PROPERTY(bool finished READ finished NOTIFY changed)
    Q_PROPERTY(bool hasSurvivors READ hasSurvivors NOTIFY changed)
    /// Prepared data: nothing can be stopped.
    Q_PROPERTY(bool preview READ preview NOTIFY changed)
    /// The sentences above and below the list.
    Q_PROPERTY(QString introduction READ introduction NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return shown_.open; }
    const QString& title() const { return shown_.title; }
    bool waiting() const { return shown_.waiting; }
    bool finished() const { return shown_.finished; }
    bool hasSurvivors() const { return shown_.hasSurvivors; }
    bool preview() const { return shown_.preview; }
    const QString& introduction() const { return shown_.introduction; }
    const QString& explanation() const { return shown_.explanation; }
    QAbstractItemModel* rows() { return &rows_; }

    Q_INVOKABLE void quitSelected();
    Q_INVOKABLE void forceQuitRemaining();
    Q_INVOKABLE void close();

signals:
    void changed();

private:
    struct Shown {
        bool open = false;
        QString title;
        bool waiting = false;
        bool finished = false;
        bool hasSurvivors = false;
        bool preview = false;
        QString introduction;
        QString explanation;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void begin() override;
    void refresh();
    std::vector<SheetRow> rowsOf(const BatchStopPlan& plan) const;
    void describeGroup(SheetRow& row, const std::string& bundlePath) const;

    Shown shown_;
    KeyedListModel<SheetRow> rows_;
};

} // namespace varnet

#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// What the report shows: the line as it was frozen, empty while there is none.
class RoastSheetModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QStringList observations READ observations NOTIFY changed)
    /// Name of the flame's face.
    Q_PROPERTY(QString expression READ expression NOTIFY changed)

public:
    using ViewModel::ViewModel;

    QString headline() const { return headline_; }
    QString explanation() const { return explanation_; }
    QStringList observations() const { return observations_; }
    QString expression() const { return expression_; }

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();

    QString headline_;
    QString explanation_;
    QStringList observations_;
    QString expression_ = QStringLiteral("confused");
};

} // namespace varnet

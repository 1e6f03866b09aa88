#pragma once

#include "VarnetApp/HallOfFlame/CardSheetModel.h"
#include "VarnetApp/ShareCards/ShareCard.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The machine's report as it stood when it was asked for.
class RoastSheetModel : public CardSheetModel {
    Q_OBJECT
    QML_ELEMENT
    /// Off each time the sheet opens.
    Q_PROPERTY(bool includeProjects READ includeProjects WRITE setIncludeProjects NOTIFY changed)

public:
    using CardSheetModel::CardSheetModel;

    bool includeProjects() const { return includeProjects_; }
    void setIncludeProjects(bool include);

    QSize cardSize() const override { return ShareCard::size; }
    void paint(QPainter& painter) const override;

protected:
    void begin() override;
    QImage rendered() const override;
    QString described() const override;
    QString suggestedName() const override { return ShareCard::suggestedName; }

private:
    void refresh();

    bool includeProjects_ = false;
    ShareCardSnapshot card_;
};

} // namespace varnet

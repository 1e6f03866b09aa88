#pragma once

#include "VarnetApp/MainViews/ActivityListModel.h"

namespace varnet {

struct ApplicationGroup;

/// The lists of all sources, of apps and of projects.
class GroupListModel : public ActivityListModel {
    Q_OBJECT
    QML_ELEMENT

public:
    using ActivityListModel::ActivityListModel;

    void open(const QString& key) override;
    void stop(const QString& key) override;

private:
    Page page() const override;
    Contents contents() override;
    ActivityRow rowFor(const ApplicationGroup& group, bool stoppable) const;
    const ApplicationGroup* find(const QString& key) const;
};

} // namespace varnet

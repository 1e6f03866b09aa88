#pragma once

#include "VarnetApp/MainViews/ActivityListModel.h"

namespace varnet {

struct Service;

/// The list of running servers.
class ServerListModel : public ActivityListModel {
    Q_OBJECT
    QML_ELEMENT

public:
    using ActivityListModel::ActivityListModel;

    void open(const QString& key) override;
    void stop(const QString& key) override;

private:
    Page page() const override { return Page::servers; }
    Contents contents() override;
    ActivityRow rowFor(const Service& service, bool stoppable) const;
};

} // namespace varnet

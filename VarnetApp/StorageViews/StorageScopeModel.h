#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Which of its two scopes the storage page shows.
class StorageScopeModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// The whole disk, instead of what projects occupy.
    Q_PROPERTY(bool wholeDisk READ wholeDisk WRITE setWholeDisk NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool wholeDisk() const noexcept { return wholeDisk_; }
    void setWholeDisk(bool whole);

signals:
    void changed();

protected:
    void begin() override;

private:
    bool wholeDisk_ = false;
};

} // namespace varnet

#include "VarnetApp/StorageViews/StorageScopeModel.h"

#include "VarnetApp/StorageStore/DiskStorageStore.h"

namespace varnet {

void StorageScopeModel::begin() {
    if (context().storage) setWholeDisk(context().storage->page.wholeDisk);
}

void StorageScopeModel::setWholeDisk(bool whole) {
    if (whole == wholeDisk_) return;
    wholeDisk_ = whole;
    if (context().storage) context().storage->page.wholeDisk = whole;
    emit changed();
}

} // namespace varnet

# The map of what is on disk, for every page that shows one.
list(
    APPEND
    views_cpp
    StorageMap/DiskNames.cpp
    StorageMap/MapLooks.cpp
    StorageMap/TreemapAccess.cpp
    StorageMap/TreemapCells.cpp
    StorageMap/TreemapItem.cpp
    StorageMap/TreemapModel.cpp
    StorageMap/TreemapPainter.cpp)
list(APPEND views_qml StorageMap/Treemap.qml)

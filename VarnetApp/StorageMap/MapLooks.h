#pragma once

#include "VarnetApp/Components/Palette.h"
#include "VarnetCore/Disk/DiskMapNode.h"
#include "VarnetCore/Storage/StorageBucket.h"

#include <QString>

#include <string_view>

/// What the map's hues, icons and kinds of content look like here.
namespace varnet::MapLooks {

/// One of our icons for a node's symbol; "file" for a symbol that is not known.
QString iconOf(std::string_view symbol);

/// Name of the Theme colour that a hue is, for QML: `Theme[name]`.
QString toneName(MapTone tone);
QColor toneOf(const Palette& palette, MapTone tone);

/// Name of the Theme colour of a bucket, for a legend.
QString bucketToneName(StorageBucket bucket);
/// The fill of a bucket in a project's tile.
QColor bucketFill(const Palette& palette, StorageBucket bucket);

} // namespace varnet::MapLooks

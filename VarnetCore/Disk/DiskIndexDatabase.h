#pragma once

#include "VarnetCore/Base/Sqlite.h"

namespace varnet {

// An index of the disk is a database of its own.
using DiskIndexDatabase = SqliteDatabase;
using DiskIndexStatement = SqliteStatement;
using DiskIndexError = SqliteError;

template <typename Value = void>
using DiskIndexResult = SqliteResult<Value>;

} // namespace varnet

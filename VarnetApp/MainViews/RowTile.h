#pragma once

#include <QString>

namespace varnet {

struct ApplicationGroup;

/// What a row is about; it decides its tile and the tone of its bar.
enum class RowKind { application, project, system, process, server, forgottenServer };

/// The toned square in front of a name.
struct RowTile {
    QString icon;   ///< empty: the letter
    QString letter; ///< of an application
    QString tone;   ///< name of a Theme colour; empty: that of the name

    friend bool operator==(const RowTile&, const RowTile&) = default;
};

RowKind rowKindOf(const ApplicationGroup& group) noexcept;
RowTile tileFor(RowKind kind, const QString& name);
/// Of the bar beside a figure.
QString barTone(RowKind kind);

} // namespace varnet

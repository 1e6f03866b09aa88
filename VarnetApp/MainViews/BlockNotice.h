#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// What a card says instead of its content; without a title it has nothing to say.
struct BlockNotice {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString icon MEMBER icon CONSTANT)
    Q_PROPERTY(QString tone MEMBER tone CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)

public:
    QString icon;
    QString tone; ///< name of a Theme colour; "muted" is no tone
    QString title;
    QString text;

    friend bool operator==(const BlockNotice&, const BlockNotice&) = default;
};

} // namespace varnet

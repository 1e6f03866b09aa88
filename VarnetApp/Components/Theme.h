#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Colours, type and spacing of every view.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY changed)

public:
    explicit Theme(QObject* parent = nullptr);

    bool dark() const noexcept { return dark_; }

signals:
    void changed();

private:
    bool dark_ = true;
};

} // namespace varnet

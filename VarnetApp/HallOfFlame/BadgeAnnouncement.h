#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// The badge that has just been earned, while it is announced.
class BadgeAnnouncement : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// A badge is announced. What is going keeps its words.
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString quip READ quip NOTIFY changed)
    Q_PROPERTY(QString icon READ icon NOTIFY changed)
    /// Name of a colour of the theme.
    Q_PROPERTY(QString tone READ tone NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool shown() const { return shown_; }
    QString title() const { return title_; }
    QString quip() const { return quip_; }
    QString icon() const { return icon_; }
    QString tone() const { return tone_; }

    /// The user has seen it.
    Q_INVOKABLE void dismiss();

signals:
    void changed();

protected:
    void begin() override;

private:
    void refresh();

    bool shown_ = false;
    QString title_;
    QString quip_;
    QString icon_;
    QString tone_ = QStringLiteral("emberFill");
};

} // namespace varnet

#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the window in which a user writes to the makers. What was written stays until it has
/// arrived.
class FeedbackModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList kinds READ kinds CONSTANT)
    Q_PROPERTY(int kind MEMBER kind_ NOTIFY changed)
    Q_PROPERTY(QString title MEMBER title_ NOTIFY changed)
    Q_PROPERTY(QString body MEMBER body_ NOTIFY changed)
    /// Empty: no answer is wanted.
    Q_PROPERTY(QString email MEMBER email_ NOTIFY changed)
    Q_PROPERTY(bool sending READ sending NOTIFY changed)
    Q_PROPERTY(bool canSend READ canSend NOTIFY changed)
    /// Why it cannot be sent as it stands; empty: it can.
    Q_PROPERTY(QString missing READ missing NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(bool succeeded READ succeeded NOTIFY changed)
    Q_PROPERTY(int longestTitle READ longestTitle CONSTANT)
    Q_PROPERTY(int longestBody READ longestBody CONSTANT)

public:
    using ViewModel::ViewModel;

    QStringList kinds() const;
    bool sending() const { return sending_; }
    bool canSend() const { return !sending_ && missing().isEmpty(); }
    QString missing() const;
    QString message() const { return message_; }
    bool succeeded() const { return succeeded_; }
    /// UTF-16 units.
    static int longestTitle() { return 120; }
    static int longestBody() { return 5000; }

    Q_INVOKABLE void send();

signals:
    void changed();

protected:
    void begin() override;

private:
    void sent(bool accepted);

    int kind_ = 0;
    QString title_;
    QString body_;
    QString email_;
    bool sending_ = false;
    QString message_;
    bool succeeded_ = false;
};

} // namespace varnet

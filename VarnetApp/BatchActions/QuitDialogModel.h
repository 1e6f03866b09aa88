#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Stands behind the question before an application is quit. Main thread only.
class QuitDialogModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString quitTitle READ quitTitle NOTIFY changed)
    /// Empty: there is no such button.
    Q_PROPERTY(QString forceQuitTitle READ forceQuitTitle NOTIFY changed)
    /// What is asked for loses unsaved work.
    Q_PROPERTY(bool critical READ critical NOTIFY changed)

public:
    using ViewModel::ViewModel;

    bool isOpen() const { return isOpen_; }
    const QString& message() const { return message_; }
    const QString& text() const { return text_; }
    const QString& quitTitle() const { return quitTitle_; }
    const QString& forceQuitTitle() const { return forceQuitTitle_; }
    bool critical() const { return critical_; }

    Q_INVOKABLE void quit();
    Q_INVOKABLE void forceQuit();
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    void begin() override;
    void refresh();

    bool isOpen_ = false;
    QString message_;
    QString text_;
    QString quitTitle_;
    QString forceQuitTitle_;
    bool critical_ = false;
};

} // namespace varnet

#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace varnet {

/// Turns the signals by which a session or a terminal ends a program into a call on the main thread. One
/// instance at a time.
class UnixSignals : public QObject {
    Q_OBJECT

public:
    explicit UnixSignals(std::function<void()> terminate, QObject* parent = nullptr);
    ~UnixSignals() override;

private:
    std::unique_ptr<QSocketNotifier> notifier_;
    int readEnd_ = -1;
};

} // namespace varnet

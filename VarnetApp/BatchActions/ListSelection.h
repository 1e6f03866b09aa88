#pragma once

#include "VarnetApp/AppStore/StopOperations.h"
#include "VarnetCore/Findings/StopSelection.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <string>
#include <vector>

namespace varnet {

/// What is ticked in one list, among what can be ticked there. Main thread only.
class ListSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its list")
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// Something can be ticked.
    Q_PROPERTY(bool available READ available NOTIFY changed)
    Q_PROPERTY(bool all READ all NOTIFY changed)
    Q_PROPERTY(bool partial READ partial NOTIFY changed)
    Q_PROPERTY(QString countText READ countText NOTIFY changed)
    Q_PROPERTY(QString stopText READ stopText NOTIFY changed)

public:
    using Candidates = std::map<std::string, std::vector<BatchStopRequest>>;

    using QObject::QObject;

    /// @param stopping outlives this
    void setStopping(StopOperations& stopping) { stopping_ = &stopping; }
    /// What the list shows now. Whatever has left it is unticked; the rest keeps standing for what the user
    /// saw when ticking it.
    void setCandidates(Candidates candidates);

    bool contains(const std::string& id) const { return selection_.items.contains(id); }
    bool isCandidate(const std::string& id) const { return candidates_.contains(id); }
    int count() const { return static_cast<int>(selection_.items.size()); }
    bool available() const { return !candidates_.empty(); }
    bool all() const { return available() && selection_.items.size() == candidates_.size(); }
    bool partial() const { return count() > 0 && !all(); }
    QString countText() const { return QString::number(count()) + " selected"; }
    QString stopText() const { return "Stop " + QString::number(count()) + " selected"; }

    Q_INVOKABLE void toggle(const QString& id);
    /// Ticks everything, or nothing when everything is ticked.
    Q_INVOKABLE void toggleAll();
    Q_INVOKABLE void clear();
    /// Has what is ticked reviewed.
    Q_INVOKABLE void stop();

signals:
    void changed();

private:
    StopOperations* stopping_ = nullptr;
    StopSelection selection_;
    Candidates candidates_;
};

} // namespace varnet

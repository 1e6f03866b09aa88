#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace varnet {

/// Lays a headline out in the display size, or in the title size where that takes more than two lines.
class HeadlineLayout : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString words MEMBER words_ WRITE setWords NOTIFY changed)
    /// Logical pixels.
    Q_PROPERTY(double width MEMBER width_ WRITE setWidth NOTIFY changed)
    /// Begins with the title size.
    Q_PROPERTY(bool compact MEMBER compact_ WRITE setCompact NOTIFY changed)
    /// The words with their line feed.
    Q_PROPERTY(QString text READ text NOTIFY laidOut)
    Q_PROPERTY(bool isTitle READ isTitle NOTIFY laidOut)

public:
    using QObject::QObject;

    void setWords(const QString& words);
    void setWidth(double width);
    void setCompact(bool compact);
    QString text() const { return text_; }
    bool isTitle() const { return isTitle_; }

signals:
    void changed();
    void laidOut();

private:
    void layOut();

    QString words_;
    double width_ = 0;
    bool compact_ = false;
    QString text_;
    bool isTitle_ = false;
};

} // namespace varnet

#pragma once

#include "VarnetApp/Components/ViewContext.h"

#include <QImage>
#include <QSize>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class QPainter;

namespace varnet {

/// Stands behind a sheet that shares a picture: what it looks like, and what became of saving and copying.
class CardSheetModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Each sheet has a kind of its own.")
    /// Height of the picture for a width of one.
    Q_PROPERTY(double aspect READ aspect CONSTANT)
    /// What the picture shows, in the user's language.
    Q_PROPERTY(QString description READ description NOTIFY changed)
    /// There is a picture to save and to copy.
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    /// A sentence on what came of the last act; empty: there is nothing to tell.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    /// The sentence tells of a failure.
    Q_PROPERTY(bool failed READ failed NOTIFY messageChanged)
    /// Where a file dialog begins, the name included.
    Q_PROPERTY(QUrl suggestedFile READ suggestedFile CONSTANT)

public:
    using ViewModel::ViewModel;

    double aspect() const;
    virtual QSize cardSize() const = 0;
    QString description() const { return description_; }
    /// In units of the finished picture's pixels.
    virtual void paint(QPainter& painter) const = 0;
    bool ready() const { return !image_.isNull(); }
    const QImage& image() const { return image_; }
    QString message() const { return message_; }
    bool failed() const { return failed_; }
    QUrl suggestedFile() const;

    Q_INVOKABLE void save(const QUrl& file);
    Q_INVOKABLE void copy();
    /// There is no dialog to choose a file in.
    Q_INVOKABLE void cannotSave();

signals:
    void changed();
    void messageChanged();

protected:
    virtual QImage rendered() const = 0;
    virtual QString described() const = 0;
    virtual QString suggestedName() const = 0;

    /// Paints the picture anew and forgets what was told.
    void rebuild();
    /// The sheet has closed: a picture is megabytes.
    void release();

private:
    void tell(const QString& message, bool failed);

    QImage image_;
    QString description_;
    QString message_;
    bool failed_ = false;
};

} // namespace varnet

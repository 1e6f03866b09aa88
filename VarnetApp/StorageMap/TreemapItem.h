#pragma once

#include "VarnetApp/StorageMap/TreemapCells.h"
#include "VarnetApp/StorageMap/TreemapModel.h"

#include <QPointer>
#include <QQuickPaintedItem>
#include <QRect>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace varnet {

class AppLocalization;

/// All tiles of a map in one picture; `Treemap` is how pages show it. A tile is lit by the pointer or from
/// outside; the keyboard has a tile of its own, which the arrow keys move. Only tiles that look different
/// from before are painted anew.
class TreemapItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(varnet::TreemapModel* model READ model WRITE setModel NOTIFY modelChanged)
    /// What the map is called for a screen reader.
    Q_PROPERTY(QString label MEMBER label_ NOTIFY labelChanged)
    /// The lit tile; empty: none. A page sets it for the row below the pointer.
    Q_PROPERTY(QString hoveredKey READ hoveredKey WRITE setHoveredKey NOTIFY hoverChanged)
    /// Its frame, and all there is to say about it.
    Q_PROPERTY(QRect hoveredFrame READ hoveredFrame NOTIFY hoverChanged)
    Q_PROPERTY(QString hoveredText READ hoveredText NOTIFY hoverChanged)
    /// Whether the pointer itself is on a tile.
    Q_PROPERTY(bool pointed READ pointed NOTIFY hoverChanged)
    /// The keyboard's tile; empty: none yet.
    Q_PROPERTY(QString currentKey READ currentKey WRITE setCurrentKey NOTIFY currentChanged)
    Q_PROPERTY(QRect currentFrame READ currentFrame NOTIFY currentChanged)
    Q_PROPERTY(QString currentText READ currentText NOTIFY currentChanged)
    /// The focus came by the keyboard or moved by it, so that the ring is due.
    Q_PROPERTY(bool focusVisible READ focusVisible NOTIFY focusVisibleChanged)

public:
    explicit TreemapItem(QQuickItem* parent = nullptr);
    ~TreemapItem() override;

    TreemapModel* model() const { return model_; }
    void setModel(TreemapModel* model);
    const QString& label() const { return label_; }
    QString hoveredKey() const { return keyAt(hovered_); }
    void setHoveredKey(const QString& key);
    QRect hoveredFrame() const { return frameOf(hovered_); }
    QString hoveredText() const { return textOf(hovered_); }
    bool pointed() const { return pointed_ >= 0; }
    QString currentKey() const { return keyAt(current_); }
    void setCurrentKey(const QString& key) { setCurrent(indexOf(key)); }
    QRect currentFrame() const { return frameOf(current_); }
    QString currentText() const { return textOf(current_); }
    bool focusVisible() const { return focusVisible_; }

    // By index, for a screen reader.
    const std::vector<TreemapCell>& cells() const { return cells_; }
    int current() const { return current_; }
    /// "title size".
    QString nameOf(int index) const;
    QString subtitleOf(int index) const;
    void openTile(int index);

    void paint(QPainter* painter) override;

signals:
    void modelChanged();
    void labelChanged();
    void hoverChanged();
    void currentChanged();
    void focusVisibleChanged();
    /// A click, Enter or a screen reader's press.
    void opened(const QString& key);
    /// Backspace.
    void wentUp();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool has(int index) const { return index >= 0 && static_cast<std::size_t>(index) < keys_.size(); }
    int indexOf(const QString& key) const;
    QString keyAt(int index) const;
    QRect frameOf(int index) const;
    QString textOf(int index) const;
    TreemapLanguage language() const;
    void rebuild();
    void paintAnew(int index);
    void light(int index);
    void pointAt(QPointF position);
    void setCurrent(int index);
    void setFocusVisible(bool visible);

    QPointer<TreemapModel> model_;
    QPointer<AppLocalization> localization_;
    QString label_;
    std::vector<TreemapCell> cells_; ///< one a tile of the model, at its place
    std::vector<std::string> keys_;  ///< parallel to them
    int hovered_ = -1;
    int pointed_ = -1; ///< the tile below the pointer; the lit one may be another's wish
    int pressed_ = -1;
    int current_ = -1;
    bool focusVisible_ = false;
};

} // namespace varnet

#include "VarnetApp/StorageMap/TreemapItem.h"

#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageMap/TreemapAccess.h"
#include "VarnetApp/StorageMap/TreemapPainter.h"

#include <QAccessible>
#include <QPainter>
#include <QQmlEngine>

#include <algorithm>
#include <utility>

namespace varnet {

TreemapItem::TreemapItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    installTreemapAccess();
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    connect(&Theme::shared(), &Theme::changed, this, [this] { update(); });
}

TreemapItem::~TreemapItem() = default;

void TreemapItem::componentComplete() {
    QQuickPaintedItem::componentComplete();
    if (const ViewContext* const context = ViewContext::of(qmlEngine(this))) {
        localization_ = &context->localization;
        connect(localization_, &AppLocalization::languageChanged, this, &TreemapItem::rebuild);
    }
    rebuild();
}

void TreemapItem::setModel(TreemapModel* model) {
    if (model_ == model) return;
    if (model_) model_->disconnect(this);
    model_ = model;
    if (model_) connect(model_, &TreemapModel::changed, this, &TreemapItem::rebuild);
    rebuild();
    emit modelChanged();
}

TreemapLanguage TreemapItem::language() const {
    return {Figures(localization_ ? localization_->locale() : QLocale::c()),
            [this](const QString& text) { return localization_ ? localization_->text(text) : text; }};
}

void TreemapItem::rebuild() {
    if (!isComponentComplete()) return;
    static const std::vector<TreemapTile> none;
    const std::vector<TreemapTile>& tiles = model_ ? model_->tiles() : none;
    std::vector<TreemapCell> next = treemapCells(tiles, size().toSize(), language());
    const QString hovered = hoveredKey();
    const QString current = currentKey();
    QRect changed;
    for (std::size_t i = 0; i < std::max(next.size(), cells_.size()); ++i) {
        if (i < next.size() && i < cells_.size() && next[i] == cells_[i]) continue;
        if (i < next.size()) changed |= next[i].frame;
        if (i < cells_.size()) changed |= cells_[i].frame;
    }
    const bool otherCount = cells_.size() != next.size();
    cells_ = std::move(next);
    keys_.clear();
    keys_.reserve(tiles.size());
    for (const TreemapTile& tile : tiles)
        keys_.push_back(tile.node.id);
    if (!changed.isEmpty()) update(changed.adjusted(-1, -1, 1, 1));
    if (otherCount) announceTiles(*this);

    // Tiles may have changed places: who is lit and who is current follows its key.
    pressed_ = -1;
    if (pointed_ >= 0) pointed_ = indexOf(hovered);
    light(indexOf(hovered));
    const int same = indexOf(current);
    current_ = same >= 0 || current.isEmpty() || cells_.empty() ? same : 0;
    emit hoverChanged();
    emit currentChanged();
}

int TreemapItem::indexOf(const QString& key) const {
    if (key.isEmpty()) return -1;
    const auto found = std::ranges::find(keys_, keyFromQml(key));
    return found == keys_.end() ? -1 : static_cast<int>(found - keys_.begin());
}

QString TreemapItem::keyAt(int index) const {
    return has(index) ? keyInQml(keys_[static_cast<std::size_t>(index)]) : QString();
}

QRect TreemapItem::frameOf(int index) const {
    return has(index) ? cells_[static_cast<std::size_t>(index)].frame : QRect();
}

QString TreemapItem::nameOf(int index) const {
    if (!has(index) || !model_) return {};
    const DiskMapNode& node = model_->tiles()[static_cast<std::size_t>(index)].node;
    const TreemapLanguage words = language();
    return words.title(node) + " " + words.size(node);
}

QString TreemapItem::subtitleOf(int index) const {
    if (!has(index) || !model_) return {};
    return language().subtitle(model_->tiles()[static_cast<std::size_t>(index)].node);
}

QString TreemapItem::textOf(int index) const {
    if (!has(index) || !model_) return {};
    const DiskMapNode& node = model_->tiles()[static_cast<std::size_t>(index)].node;
    const TreemapLanguage words = language();
    double sum = 0;
    for (const TreemapTile& tile : model_->tiles())
        sum += static_cast<double>(tile.node.bytes);
    QStringList parts{words.title(node), words.size(node)};
    if (sum > 0) parts << words.figures.wholePercent(100 * static_cast<double>(node.bytes) / sum);
    const QString subtitle = words.subtitle(node);
    if (!subtitle.isEmpty()) parts << subtitle;
    return parts.join(" · ");
}

void TreemapItem::openTile(int index) {
    if (has(index)) emit opened(keyAt(index));
}

void TreemapItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const Palette& palette = Theme::shared().palette();
    const QRectF dirty = painter->hasClipping() ? painter->clipBoundingRect() : boundingRect();
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (dirty.intersects(cells_[i].frame))
            paintTile(*painter, palette, cells_[i], static_cast<int>(i) == hovered_);
}

void TreemapItem::paintAnew(int index) {
    const QRect frame = frameOf(index);
    if (!frame.isEmpty()) update(frame.adjusted(-1, -1, 1, 1));
}

void TreemapItem::light(int index) {
    if (index == hovered_) return;
    paintAnew(std::exchange(hovered_, index));
    paintAnew(index);
}

void TreemapItem::setHoveredKey(const QString& key) {
    const int index = indexOf(key);
    if (index == hovered_) return;
    light(index);
    emit hoverChanged();
}

void TreemapItem::pointAt(QPointF position) {
    const int index = cellAt(cells_, position.toPoint());
    if (index == pointed_ && index == hovered_) return;
    pointed_ = index;
    light(index);
    emit hoverChanged();
}

void TreemapItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) rebuild();
}

void TreemapItem::hoverEnterEvent(QHoverEvent* event) {
    pointAt(event->position());
}

void TreemapItem::hoverMoveEvent(QHoverEvent* event) {
    pointAt(event->position());
}

void TreemapItem::hoverLeaveEvent(QHoverEvent*) {
    pointAt({-1, -1});
}

void TreemapItem::mousePressEvent(QMouseEvent* event) {
    pressed_ = cellAt(cells_, event->position().toPoint());
    if (pressed_ < 0) {
        event->ignore();
        return;
    }
    setCurrent(pressed_);
    forceActiveFocus(Qt::MouseFocusReason);
}

void TreemapItem::mouseReleaseEvent(QMouseEvent* event) {
    const int index = std::exchange(pressed_, -1);
    if (index >= 0 && index == cellAt(cells_, event->position().toPoint())) openTile(index);
}

void TreemapItem::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const int next = neighbourOf(cells_, current_, static_cast<Qt::Key>(event->key()));
        if (next >= 0) setCurrent(next);
        break;
    }
    case Qt::Key_Home:
        setCurrent(cells_.empty() ? -1 : 0);
        break;
    case Qt::Key_End:
        setCurrent(static_cast<int>(cells_.size()) - 1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) openTile(current_);
        break;
    case Qt::Key_Backspace:
        emit wentUp();
        break;
    default:
        event->ignore();
        return;
    }
    setFocusVisible(true);
}

void TreemapItem::focusInEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusInEvent(event);
    const auto reason = event->reason();
    setFocusVisible(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason);
    if (current_ < 0 && !cells_.empty()) setCurrent(0);
}

void TreemapItem::focusOutEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusOutEvent(event);
    setFocusVisible(false);
}

void TreemapItem::setCurrent(int index) {
    if (index == current_) return;
    current_ = index;
    if (hasActiveFocus()) announceCurrent(*this);
    emit currentChanged();
}

void TreemapItem::setFocusVisible(bool visible) {
    if (visible == focusVisible_) return;
    focusVisible_ = visible;
    emit focusVisibleChanged();
}

} // namespace varnet

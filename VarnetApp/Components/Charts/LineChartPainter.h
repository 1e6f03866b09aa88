#pragma once

#include "VarnetApp/Components/Charts/LineGeometry.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPainter>
#include <QStringList>

namespace varnet {

struct LineChartTones {
    QColor line;
    QColor grid;
    QColor label;
    QColor rule;
    QColor ground; ///< what the chart lies on; it rings the hovered point
    QColor bubble;
    QColor bubbleLine;
    QColor bubbleText;
    QColor band;
    QColor faintBand;
};

/// Everything that one picture of a line chart needs; texts come ready to show.
struct LineChart {
    QList<QPointF> points; ///< x a time, y a value
    double gap = 0;        ///< points further apart in time than this are not joined; 0 joins all
    QList<int> starts;     ///< points, by index and ascending, that are not joined with the one before
    double from = 0;
    double to = 1;
    double low = 0;
    double high = 100;
    QStringList gridLabels; ///< from the low end up, one for each grid line
    QStringList timeLabels; ///< from the left end, spread evenly
    QList<QPointF> bands;   ///< times from x to y, marked on the axis
    QList<QPointF> faintBands;
    QFont font;
    LineChartTones tones;
    int current = -1; ///< the point under the rule; -1 for none
    QString currentText;
};

/// The scale of a chart of this size, once its labels have their room.
LineScale lineScale(const LineChart& chart, QSizeF size);

/// @param drawable of the chart's points
/// @param devicePixelRatio device pixels of one unit of the painter
void paintLineChart(QPainter& painter, const LineChart& chart, const std::vector<int>& drawable, QSizeF size,
                    double devicePixelRatio);

} // namespace varnet

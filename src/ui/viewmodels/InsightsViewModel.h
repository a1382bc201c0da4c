#pragma once

#include "StoreViewModel.h"

#include <QVariantList>

namespace quill {

/// Every figure of the insights screen: the pill, the four tiles, the seven-day bars and
/// their scale, the plan ring, the task table and the quality trend. Recomputed from the
/// store's sessions whenever they or the day change.
class InsightsViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// "基于最近 N 轮".
    Q_PROPERTY(QString sampleText READ sampleText NOTIFY figuresChanged)
    /// The four tiles in order: maps with "symbol", "value", "label", "footnote", "tint".
    Q_PROPERTY(QVariantList tiles READ tiles NOTIFY figuresChanged)
    /// Seven days, oldest first: maps with "label" (narrow weekday), "minutes", "accessible".
    Q_PROPERTY(QVariantList weekBars READ weekBars NOTIFY figuresChanged)
    /// Top of the bar chart's minute axis: a round number at or above the largest bar.
    Q_PROPERTY(int weekAxisMax READ weekAxisMax NOTIFY figuresChanged)
    /// Marks on the minute axis, 0 and the top included.
    Q_PROPERTY(int weekTickCount READ weekTickCount NOTIFY figuresChanged)
    /// The plan ring's arc: capacity ÷ 120, at most a full circle.
    Q_PROPERTY(double ringProgress READ ringProgress NOTIFY figuresChanged)
    /// The suggested length inside the ring, as a bare number.
    Q_PROPERTY(QString recommendedValue READ recommendedValue NOTIFY figuresChanged)
    /// Task table rows: maps with "name", "uncategorized", "fraction", "minutes", "sessions",
    /// "rating".
    Q_PROPERTY(QVariantList taskRows READ taskRows NOTIFY figuresChanged)
    /// The footnote under a cut task table, or empty when every task is shown.
    Q_PROPERTY(QString taskFootnote READ taskFootnote NOTIFY figuresChanged)
    /// Trend points, oldest first: maps with "x" (from 1) and "y" (the rating).
    Q_PROPERTY(QVariantList trendPoints READ trendPoints NOTIFY figuresChanged)
    /// Right end of the trend's x axis.
    Q_PROPERTY(int trendAxisMax READ trendAxisMax NOTIFY figuresChanged)

public:
    explicit InsightsViewModel(AppStore& store, QObject* parent = nullptr);

    QString sampleText() const { return m_sampleText; }
    QVariantList tiles() const { return m_tiles; }
    QVariantList weekBars() const { return m_weekBars; }
    int weekAxisMax() const { return m_weekAxisMax; }
    int weekTickCount() const { return m_weekTickCount; }
    double ringProgress() const { return m_ringProgress; }
    QString recommendedValue() const { return m_recommendedValue; }
    QVariantList taskRows() const { return m_taskRows; }
    QString taskFootnote() const { return m_taskFootnote; }
    QVariantList trendPoints() const { return m_trendPoints; }
    int trendAxisMax() const { return m_trendAxisMax; }

    /// Takes the suggested length for the next round and shows the focus screen.
    Q_INVOKABLE void adoptRecommendation();

    /// A round top for an axis whose largest value is `largest`, and the step between marks.
    static std::pair<int, int> niceAxis(qint64 largest);

Q_SIGNALS:
    void figuresChanged();

private:
    void connectStore();
    void refreshAll();
    QString m_sampleText;
    QVariantList m_tiles, m_weekBars, m_taskRows, m_trendPoints;
    int m_weekAxisMax = 0, m_weekTickCount = 0, m_trendAxisMax = 0;
    double m_ringProgress = 0;
    QString m_recommendedValue, m_taskFootnote;
};

} // namespace quill

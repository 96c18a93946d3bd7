#pragma once

#include <QCheckBox>
#include <QPalette>
#include <QPixmap>

class QStyleOptionButton;

/// A check box without a text that is drawn once for each of its states.
///
/// Styles draw the box from gradients and antialiased paths, in a plot under a style sheet also by way of the
/// sheet's rules: that took a third of a frame of a plot of few samples.
class LegendCheckBox : public QCheckBox {
    Q_OBJECT

public:
    explicit LegendCheckBox(QWidget* parent = nullptr);
    ~LegendCheckBox() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QPixmap drawn(const QStyleOptionButton& option) const;

    QPixmap m_picture;
    // What the picture shows.
    int m_state = 0;
    qint64 m_palette = 0;
};

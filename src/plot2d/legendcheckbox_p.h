#pragma once

#include <QCheckBox>
#include <QElapsedTimer>
#include <QPixmap>

#include <optional>

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
    /// What decides how the box looks.
    struct Look {
        int state = 0;
        qint64 palette = 0;

        bool operator!=(const Look& other) const { return state != other.state || palette != other.palette; }
    };

    bool isSettled() const;
    QPixmap drawn(const QStyleOptionButton& option) const;
    /// False where the picture does not lie on whole pixels.
    bool paintPicture();

    std::optional<Look> m_look;
    QPixmap m_picture;
    QElapsedTimer m_changed;
};

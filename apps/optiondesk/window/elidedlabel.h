#pragma once

#include <QLabel>

/// A line of text that is cut with an ellipsis where it is longer than the room; the tool tip has it whole.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setFullText(const QString& text);
    QString fullText() const { return m_text; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void elide();

    QString m_text;
};

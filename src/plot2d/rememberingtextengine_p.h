#pragma once

#include <QFont>
#include <QHash>

#include <qwt_text_engine.h>

#include <memory>
#include <vector>

/// Draws plain texts by another engine, and remembers the sizes and margins that this one has measured.
class RememberingTextEngine : public QwtTextEngine {
public:
    explicit RememberingTextEngine(std::unique_ptr<QwtTextEngine> measuring);
    ~RememberingTextEngine() override;

    double heightForWidth(const QFont& font, int flags, const QString& text, double width) const override;
    QSizeF textSize(const QFont& font, int flags, const QString& text) const override;
    /// Those of a font are the same for every text.
    void textMargins(const QFont& font, const QString& text, double& left, double& right, double& top,
        double& bottom) const override;
    void draw(QPainter* painter, const QRectF& rect, int flags, const QString& text) const override;
    /// False: no text comes into this format by itself.
    bool mightRender(const QString& text) const override;

private:
    struct Margins {
        double left = 0.0;
        double right = 0.0;
        double top = 0.0;
        double bottom = 0.0;
    };

    /// What is known of a font on a screen or printer, which its height in pixels tells.
    struct Measures {
        QFont font;
        double height = 0.0;
        Margins margins;
        /// By the flags and the text.
        QHash<QPair<int, QString>, QSizeF> sizes;
    };

    Measures& measuresOf(const QFont& font) const;

    std::unique_ptr<QwtTextEngine> m_measuring;
    mutable std::vector<Measures> m_measures;
};

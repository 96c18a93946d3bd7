#include "rememberingtextengine_p.h"

#include <QFontMetricsF>

#include <algorithm>

RememberingTextEngine::RememberingTextEngine(std::unique_ptr<QwtTextEngine> measuring)
    : m_measuring(std::move(measuring))
{
}

RememberingTextEngine::~RememberingTextEngine() = default;

double RememberingTextEngine::heightForWidth(
    const QFont& font, int flags, const QString& text, double width) const
{
    return m_measuring->heightForWidth(font, flags, text, width);
}

QSizeF RememberingTextEngine::textSize(const QFont& font, int flags, const QString& text) const
{
    QHash<QPair<int, QString>, QSizeF>& sizes = measuresOf(font).sizes;
    const QPair<int, QString> key(flags, text);
    const auto known = sizes.constFind(key);
    if (known != sizes.constEnd())
        return *known;
    constexpr int mostSizes = 1000;
    if (sizes.size() >= mostSizes)
        sizes.clear();
    return *sizes.insert(key, m_measuring->textSize(font, flags, text));
}

void RememberingTextEngine::textMargins(
    const QFont& font, const QString&, double& left, double& right, double& top, double& bottom) const
{
    const Margins& margins = measuresOf(font).margins;
    left = margins.left;
    right = margins.right;
    top = margins.top;
    bottom = margins.bottom;
}

void RememberingTextEngine::draw(QPainter* painter, const QRectF& rect, int flags, const QString& text) const
{
    m_measuring->draw(painter, rect, flags, text);
}

bool RememberingTextEngine::mightRender(const QString&) const
{
    return false;
}

RememberingTextEngine::Measures& RememberingTextEngine::measuresOf(const QFont& font) const
{
    const double height = QFontMetricsF(font).height();
    const auto known = std::find_if(m_measures.begin(), m_measures.end(),
        [&](const Measures& measures) { return measures.height == height && measures.font == font; });
    if (known != m_measures.end())
        return *known;

    // The fonts of two axes and of their measuring, drawn and printed.
    constexpr std::size_t mostFonts = 8;
    if (m_measures.size() >= mostFonts)
        m_measures.clear();
    Measures measures{font, height, {}, {}};
    Margins& margins = measures.margins;
    m_measuring->textMargins(font, QString(), margins.left, margins.right, margins.top, margins.bottom);
    m_measures.push_back(measures);
    return m_measures.back();
}

#pragma once

#include <QObject>
#include <QStringList>

class Settings;

/// The files that the chains of a desk without a database came from, so that they can be read again when the
/// desk is started anew.
class ChainFiles : public QObject {
    Q_OBJECT

public:
    /// Of the name that the list is kept by in a session.
    static QString key() { return QStringLiteral("chainFiles"); }

    /// What the session before had; empty if there was none, or there are no settings.
    static QStringList ofLastSession(const Settings* settings);

    explicit ChainFiles(const QStringList& names, QObject* parent = nullptr);

    /// Whole paths in the order of the imports, the last one last.
    QStringList names() const { return m_names; }

public Q_SLOTS:
    /// One that is on the list moves to its end. The list has the last 20.
    void add(const QString& fileName);

private:
    QStringList m_names;
};

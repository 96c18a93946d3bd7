#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>

class Settings;

/// What comes back when the desk is started again: a list of named values, each of somebody who tells and
/// takes it.
///
/// The values are kept in the host's settings below "session". Only what has changed is written, so that
/// several desks on one file leave each other what they have not touched.
class DeskSession : public QObject {
    Q_OBJECT

public:
    /// Tells a value: a text, a list of texts or bytes. Other types do not come back as they were.
    using Read = std::function<QVariant()>;
    /// Takes a value that was stored, which may be anything: what cannot be taken changes nothing, silently.
    using Apply = std::function<void(const QVariant& value)>;

    /// Where the settings keep a value.
    static QString pathOf(const QString& key);

    /// The settings must outlive this object; null for a session that is not kept.
    explicit DeskSession(Settings* settings, QObject* parent = nullptr);

    /// Adds a value to the list. The functions are called until this object is gone.
    void keep(const QString& key, const Read& read, const Apply& apply);

    /// Gives back what is stored, in the order of the list, except for these keys.
    void restore(const QStringList& except = {});

    /// Saves when the window is closed, and now and then before.
    void watch(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    /// Hands what has changed to the settings.
    void save();

private:
    struct Entry {
        QString key;
        Read read;
        Apply apply;
    };

    Settings* m_settings;
    QVector<Entry> m_entries;
    /// What was stored at the start or by this desk since.
    QHash<QString, QVariant> m_known;
};

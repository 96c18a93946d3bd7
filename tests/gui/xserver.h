#pragma once

#include <QProcess>

/// An X server of the test's own, without a screen to look at: Xvfb on the first display that is free.
///
/// It ends with the connection of its last client, so that a test that crashes leaves none behind.
class XServer {
public:
    ~XServer();

    /// Starts the server and makes it the display of this process and of its children. To be called before
    /// the application object is made; false, with a message on standard error, if a program is missing or
    /// the server does not come up.
    bool start();

private:
    QProcess m_process;
};

/// SingleInstance: one window takes the files of later starts.
#pragma once

#include <functional>
#include <vector>

#include <QLocalServer>

#include "command_line.h"

/// A socket of the user's own, by which a later start hands over its files.
class SingleInstance {
public:
    using Take = std::function<void(const std::vector<FileTarget>&)>;

    /// @param name of the socket; empty: the user's own in this session
    explicit SingleInstance(QString name = {});

    /// Hands files to a window that is open. @return false: there is none, or it doesn't answer
    bool HandOver(const std::vector<FileTarget>& files);
    /// Takes the files of later starts from now on, until this object goes. A socket that an ended
    /// process left behind is replaced.
    bool Listen(Take take);

private:
    void Serve(QLocalSocket* peer);

    QString m_Name;
    QLocalServer m_Server;
    Take m_Take;
};

#include "platform/linux/x11/ClientProcess.h"

#include "platform/linux/x11/XConnection.h"

#include <QSysInfo>

namespace moorline {

namespace {

bool knowsClients(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *data = xcb_get_extension_data(connection, &xcb_res_id);
    return data && data->present;
}

std::optional<qint64> processIn(const xcb_res_query_client_ids_reply_t &reply)
{
    for (auto ids = xcb_res_query_client_ids_ids_iterator(&reply); ids.rem > 0; xcb_res_client_id_value_next(&ids)) {
        const bool isProcess = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(ids.data) == 1)
            return *xcb_res_client_id_value_value(ids.data);
    }
    return std::nullopt;
}

} // namespace

PendingClientProcess::PendingClientProcess(const XConnection &connection, xcb_window_t window)
    : m_connection(connection)
    , m_machine(connection.request(window, XCB_ATOM_WM_CLIENT_MACHINE))
{
    if (!knowsClients(connection.native()))
        return;
    const xcb_res_client_id_spec_t question{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    m_ids = xcb_res_query_client_ids(connection.native(), 1, &question);
}

std::optional<qint64> PendingClientProcess::read(const std::optional<qint64> &said) const
{
    const QByteArray machine = m_machine.read().bytes().split('\0').first();
    XReply<xcb_res_query_client_ids_reply_t> ids;
    if (m_ids)
        ids.reset(xcb_res_query_client_ids_reply(m_connection.native(), *m_ids, nullptr));
    // What is forwarded from another machine is connected by a process of this one.
    if (!machine.isEmpty() && !isSameMachine(machine, QSysInfo::machineHostName().toLocal8Bit()))
        return std::nullopt;
    return ids ? processIn(*ids) : said;
}

bool isSameMachine(const QByteArray &one, const QByteArray &other)
{
    const QByteArray first = one.toLower();
    const QByteArray second = other.toLower();
    return first == second || first.startsWith(second + '.') || second.startsWith(first + '.');
}

} // namespace moorline

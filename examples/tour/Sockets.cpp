// Sockets: an echo server and its client over loopback, driven by one thread.
#include "Tour.h"

#include <cstdio>

#include <vorn/vorn.h>

using vorn::base::CRef;
using vorn::net::CInetAddress;
using vorn::net::CServerSocket;
using vorn::net::CSocket;

void tour::Sockets() {
    Section("Sockets");
    CInetAddress loopback = CInetAddress::GetByName("127.0.0.1");
    unsigned short port = 0;
    {
        CServerSocket server(0, 5, loopback); // port 0: the system picks one
        port = server.GetLocalPort();
        std::printf("echo server listening on %s:%u\n",
                    static_cast<const char*>(loopback.GetHostAddress()), port);

        // The connection waits in the server's queue until it is accepted.
        CSocket client(loopback, port);
        CRef<CSocket> connection = server.Accept();
        std::printf("accepted a connection from %s, port %u\n",
                    static_cast<const char*>(connection->GetInetAddress()->GetHostName()),
                    connection->GetPort());

        const char request[] = "hello, echo";
        client.GetOutputStream()->Write(request, sizeof request - 1);
        char buffer[64];
        int n = connection->GetInputStream()->Read(buffer, sizeof buffer); // what has come
        connection->GetOutputStream()->Write(buffer, static_cast<unsigned int>(n));
        n = client.GetInputStream()->Read(buffer, sizeof buffer);
        std::printf("the client got back %d bytes: \"%.*s\"\n", n, n, buffer);

        client.Close();
        std::printf("after the client's Close the server reads %d bytes (0, not -1)\n",
                    connection->GetInputStream()->Read(buffer, sizeof buffer));
        std::printf("Accept(10) with nobody calling -> %s\n",
                    server.Accept(10).IsNull() ? "null" : "a socket");
    }
    // The last copy of the server is gone, and with it the listening socket.
    try {
        CSocket refused(loopback, port);
    } catch (const vorn::net::CWinSocketException& e) {
        std::printf("connecting again: %s (%s, code %d)\n", e.GetErrorDescription(), e.GetMessage(),
                    e.GetErrorCode());
    }
}

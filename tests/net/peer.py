"""Outside peer of the socket tests, on loopback only. Bytes are (7 * i + 3) mod 256.

peer.py server MODE SIZE       prints a free port, serves one connection and exits
peer.py client MODE PORT SIZE  exits 0 when the echo of what it sent matches
MODE echo: SIZE bytes and their echo; slow: SIZE bytes one at a time (a server sends without
reading); half: a server echoes half of what it read, a client sends half; then each closes.
"""

import socket
import sys
import threading
import time


def receive(connection, size):
    data = bytearray()
    while len(data) < size:
        chunk = connection.recv(min(65536, size - len(data)))
        if not chunk:
            break
        data += chunk
    return bytes(data)


def send(connection, data, mode):
    if mode != "slow":
        return connection.sendall(data)
    for i in range(len(data)):
        connection.sendall(data[i:i + 1])
        time.sleep(0.001)


def server(mode, size, data):
    with socket.create_server(("127.0.0.1", 0)) as listener:
        print(listener.getsockname()[1], flush=True)
        listener.settimeout(30)  # a test that never connects doesn't keep the peer
        connection, _ = listener.accept()
        with connection:
            if mode == "slow":
                return send(connection, data, mode)
            if mode == "half":
                return connection.sendall(receive(connection, size)[:size // 2])
            while size > 0:
                chunk = connection.recv(min(65536, size))
                if not chunk:
                    break
                connection.sendall(chunk)
                size -= len(chunk)


def client(mode, port, size, data):
    with socket.create_connection(("127.0.0.1", port)) as connection:
        if mode == "half":
            return connection.sendall(data[:size // 2])
        echoed = []
        reader = threading.Thread(target=lambda: echoed.append(receive(connection, size)))
        reader.start()
        send(connection, data, mode)
        reader.join()
        return 0 if echoed[0] == data else 1


if __name__ == "__main__":
    size = int(sys.argv[-1])
    data = bytes((7 * i + 3) & 0xFF for i in range(size))
    if sys.argv[1] == "server":
        sys.exit(server(sys.argv[2], size, data))
    sys.exit(client(sys.argv[2], int(sys.argv[3]), size, data))

"""The socket tests' outside peer, on loopback only.

peer.py server MODE SIZE       listens on a free port, prints it, serves one connection, exits
peer.py client MODE PORT SIZE  connects, exits 0 when the echo matches what it sent

MODE: echo (all SIZE bytes back), slow (SIZE bytes one at a time: a server sends them without
reading), half (a server echoes half of what it read, a client sends half; then each closes). Bytes are (7 * i + 3) mod 256, as in the tests.
"""

import socket
import sys
import threading
import time


def payload(size):
    return bytes((7 * i + 3) & 0xFF for i in range(size))


def receive(connection, size):
    data = bytearray()
    while len(data) < size:
        chunk = connection.recv(min(65536, size - len(data)))
        if not chunk:
            break
        data += chunk
    return bytes(data)


def send_slowly(connection, data):
    for i in range(len(data)):
        connection.sendall(data[i:i + 1])
        time.sleep(0.001)


def server(mode, size):
    with socket.create_server(("127.0.0.1", 0)) as listener:
        print(listener.getsockname()[1], flush=True)
        connection, _ = listener.accept()
        with connection:
            if mode == "slow":
                send_slowly(connection, payload(size))
                return 0
            if mode == "half":
                connection.sendall(receive(connection, size)[:size // 2])
                return 0
            while size > 0:
                chunk = connection.recv(min(65536, size))
                if not chunk:
                    break
                connection.sendall(chunk)
                size -= len(chunk)
    return 0


def client(mode, port, size):
    data = payload(size)
    with socket.create_connection(("127.0.0.1", port)) as connection:
        if mode == "half":
            connection.sendall(data[:size // 2])
            return 0
        echoed = []
        reader = threading.Thread(target=lambda: echoed.append(receive(connection, size)))
        reader.start()
        if mode == "slow":
            send_slowly(connection, data)
        else:
            connection.sendall(data)
        reader.join()
        return 0 if echoed[0] == data else 1


if __name__ == "__main__":
    role, mode = sys.argv[1], sys.argv[2]
    if role == "server":
        sys.exit(server(mode, int(sys.argv[3])))
    sys.exit(client(mode, int(sys.argv[3]), int(sys.argv[4])))

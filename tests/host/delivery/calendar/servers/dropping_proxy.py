"""Stands before an HTTP server on loopback: the answers to the first requests are lost.

Arguments: the server's port, and how many answers never come back. It prints its own port.
"""

import socket
import sys
import threading


def read_request(connection):
    """The bytes of one request with its body; empty if nobody asks any more."""
    data = b""
    while b"\r\n\r\n" not in data:
        piece = connection.recv(65536)
        if not piece:
            return b""
        data += piece
    head, _, body = data.partition(b"\r\n\r\n")
    length = 0
    for line in head.split(b"\r\n")[1:]:
        name, _, value = line.partition(b":")
        if name.lower() == b"content-length":
            length = int(value)
    while len(body) < length:
        body += connection.recv(65536)
    return head + b"\r\nConnection: close\r\n\r\n" + body


def ask(port, request):
    with socket.create_connection(("127.0.0.1", port)) as server:
        server.sendall(request)
        answer = b""
        while True:
            piece = server.recv(65536)
            if not piece:
                return answer
            answer += piece


class Proxy:
    def __init__(self, port, drops):
        self.port = port
        self.drops = drops
        self.lock = threading.Lock()

    def serve(self, connection):
        with connection:
            request = read_request(connection)
            if not request:
                return
            answer = ask(self.port, request)
            with self.lock:
                dropped = self.drops > 0
                self.drops -= 1
            if not dropped:
                connection.sendall(answer)


def main():
    proxy = Proxy(int(sys.argv[1]), int(sys.argv[2]))
    listener = socket.create_server(("127.0.0.1", 0))
    print("port %d" % listener.getsockname()[1], flush=True)
    while True:
        connection, _ = listener.accept()
        threading.Thread(target=proxy.serve, args=(connection,), daemon=True).start()


main()

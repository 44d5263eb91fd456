"""A mail server on loopback for tests: prints "PORT n", then one line of JSON for each thing that a
client does. It behaves, and misbehaves, as its options say."""

import argparse
import asyncio
import email
import email.policy
import json
import os
import queue
import signal
import ssl
import threading

from aiosmtpd.smtp import SMTP, AuthResult

options = argparse.ArgumentParser()
options.add_argument("--refuse", default="", help="STAGE:REPLY, for instance RCPT:550 5.1.1 nobody")
options.add_argument("--drop", default="", help="the stage at which the line is dropped")
options.add_argument("--hang", default="", help="the stage from which on nothing is answered")
options.add_argument("--freeze", default="", help="the stage at which the whole server stops")
options.add_argument("--tls", default="", help="starttls or smtps")
options.add_argument("--cert", default="")
options.add_argument("--key", default="")
options.add_argument("--user", default="", help="user:password that has to log in")
options.add_argument("--auth-reply", default="", help="the answer to every log-in")
options.add_argument("--greeting", default="", help="said instead of the server's own greeting")
options.add_argument("--garbage", action="store_true", help="never ends to talk")
options = options.parse_args()


# Written by a thread of its own, so that a reader who takes his time does not hold the server up.
lines = queue.Queue()


def write():
    while True:
        print(lines.get(), flush=True)
        lines.task_done()


def tell(**what):
    lines.put(json.dumps(what))


def parsed(envelope):
    message = email.message_from_bytes(envelope.original_content, policy=email.policy.default)
    pieces = envelope.original_content.split(b"\r\n")
    return {
        "sender": envelope.mail_from,
        "recipients": envelope.rcpt_tos,
        "headers": message.keys(),
        "subject": message["Subject"],
        "from": [(a.display_name, a.addr_spec) for a in message["From"].addresses],
        "to": [(a.display_name, a.addr_spec) for a in message["To"].addresses],
        "date": message["Date"].datetime.isoformat(),
        "id": str(message["Message-ID"]),
        "type": message.get_content_type(),
        "charset": message.get_content_charset(),
        "body": message.get_content().replace("\r\n", "\n"),
        "parts": message.is_multipart(),
        "defects": [str(d) for d in message.defects]
        + [str(d) for value in message.values() for d in value.defects],
        "longest": max(len(line) for line in pieces),
        "bare": any(b"\n" in line or b"\r" in line for line in pieces),
        "ascii": envelope.original_content.isascii(),
    }


class Misbehaving(SMTP):
    """What the options say happens before the stage is answered."""

    async def misbehaves(self, stage):
        if options.drop == stage:
            self.transport.abort()
            return True
        if options.freeze == stage:
            tell(frozen=stage)
            lines.join()
            os.kill(os.getpid(), signal.SIGSTOP)
        if options.hang == stage:
            tell(hangs=stage)
            await asyncio.Event().wait()
        name, _, reply = options.refuse.partition(":")
        if name == stage:
            await self.push(reply)
            return True
        return False

    async def push(self, status):
        if options.greeting and str(status).startswith("220 server.test"):
            status = options.greeting
        await super().push(status)

    async def smtp_EHLO(self, hostname):
        tell(command="EHLO")
        if not await self.misbehaves("EHLO"):
            await super().smtp_EHLO(hostname)

    async def smtp_STARTTLS(self, arg):
        tell(command="STARTTLS")
        if not await self.misbehaves("STARTTLS"):
            await super().smtp_STARTTLS(arg)

    async def smtp_AUTH(self, arg):
        tell(command="AUTH", tls=self.transport.get_extra_info("sslcontext") is not None)
        if options.auth_reply:
            await self.push(options.auth_reply)
        elif not await self.misbehaves("AUTH"):
            await super().smtp_AUTH(arg)

    async def smtp_MAIL(self, arg):
        tell(command="MAIL " + arg)
        if not await self.misbehaves("MAIL"):
            await super().smtp_MAIL(arg)

    async def smtp_RCPT(self, arg):
        tell(command="RCPT " + arg)
        if not await self.misbehaves("RCPT"):
            await super().smtp_RCPT(arg)

    async def smtp_DATA(self, arg):
        tell(command="DATA")
        if options.drop == "354":
            await self.push("354 go on")
            self.transport.close()
            return
        if options.hang == "354":
            await self.push("354 go on")
            tell(hangs="354")
            await asyncio.Event().wait()
        if not await self.misbehaves("DATA"):
            await super().smtp_DATA(arg)

    async def smtp_QUIT(self, arg):
        tell(command="QUIT")
        if not await self.misbehaves("QUIT"):
            await super().smtp_QUIT(arg)


class Handler:
    async def handle_DATA(self, server, session, envelope):
        tell(message=parsed(envelope), user=str(session.auth_data or ""))
        stage, _, reply = options.refuse.partition(":")
        if stage == "DOT":
            return reply
        await server.misbehaves("DOT")
        return "250 2.0.0 taken"


def authenticator(server, session, envelope, mechanism, data):
    user, _, password = options.user.partition(":")
    good = data.login == user.encode() and data.password == password.encode()
    tell(login=data.login.decode(), good=good)
    return AuthResult(success=good, handled=False, auth_data=user if good else None)


async def garbage(reader, writer):
    try:
        while True:
            writer.write(b"220-and on and on\r\n" * 1000)
            await writer.drain()
    except OSError:
        pass


async def silence(reader, writer):
    tell(connected=True)
    await asyncio.Event().wait()


def context():
    if not options.tls:
        return None
    result = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    result.load_cert_chain(options.cert, options.key)
    return result


def session():
    return Misbehaving(
        Handler(),
        hostname="server.test",
        data_size_limit=None,
        enable_SMTPUTF8=False,
        tls_context=context() if options.tls == "starttls" else None,
        authenticator=authenticator if options.user else None,
        auth_required=bool(options.user),
        auth_require_tls=options.tls == "starttls",
        loop=asyncio.get_running_loop(),
    )


def end():
    lines.join()
    os._exit(0)


async def main():
    loop = asyncio.get_running_loop()
    loop.add_signal_handler(signal.SIGTERM, end)
    if options.garbage or options.hang == "GREETING":
        server = await asyncio.start_server(garbage if options.garbage else silence, "127.0.0.1", 0)
    else:
        tls = context() if options.tls == "smtps" else None
        server = await loop.create_server(session, "127.0.0.1", 0, ssl=tls)
    lines.put("PORT %d" % server.sockets[0].getsockname()[1])
    await asyncio.Event().wait()


threading.Thread(target=write, daemon=True).start()
asyncio.run(main())

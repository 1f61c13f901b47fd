"""A mail server for tests, on a free port of the loopback, in one of many moods.

smtpserver.py FOLDER CERTIFICATE KEY MOOD...: prints the port and serves until its standard input ends. Each mail that
arrives is written to FOLDER: <n>.eml, its bytes as they came, and <n>.json, with its envelope and its decoded parts.
"""
import asyncio
import base64
import email
import email.policy
import io
import json
import os
import ssl
import sys
import zipfile

from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

folder, certificate, key, *moods = sys.argv[1:]


class Mailbox:
    count = 0

    async def handle_MAIL(self, server, session, envelope, address, options):
        if "refuse-sender" in moods:
            return "550 5.7.1 Sender is not known here"
        if "two-lines" in moods:
            return "554-5.7.1 Not from here\r\n554 5.7.1 ask the help desk"
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, options):
        if address.startswith("nobody"):
            return "550 5.1.1 No such user here, sorry"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if "stall-at-the-end" in moods:
            await asyncio.sleep(3600)
        if "drop" in moods:
            server.transport.abort()
            return "451 never read"
        if "full" in moods:
            return "452 4.3.1 Insufficient system storage,\r\n452 try again later"
        Mailbox.count += 1
        content = envelope.original_content
        parts = list(email.message_from_bytes(content, policy=email.policy.default).walk())
        facts = {
            "from": envelope.mail_from,
            "to": envelope.rcpt_tos,
            "login": session.auth_data and session.auth_data.login.decode(),
            "encrypted": session.ssl is not None or "tls" in moods,
            "headers": {name: str(value) for name, value in parts[0].items()},
            "text": parts[1].get_content(),
            "name": parts[2].get_filename(),
            "attachment": base64.b64encode(parts[2].get_payload(decode=True)).decode(),
        }
        packed = io.BytesIO(parts[2].get_payload(decode=True))
        if zipfile.is_zipfile(packed):
            with zipfile.ZipFile(packed) as archive:
                facts["broken"] = archive.testzip()
                facts["files"] = {name: base64.b64encode(archive.read(name)).decode() for name in archive.namelist()}
        with open(f"{folder}/{Mailbox.count}.eml", "wb") as file:
            file.write(content)
        with open(f"{folder}/{Mailbox.count}.json", "w") as file:
            json.dump(facts, file)
        return "250 2.0.0 Taken"


def authenticate(server, session, envelope, mechanism, data):
    right = isinstance(data, LoginPassword) and data.login == b"trader" and data.password == "口令 123".encode()
    return AuthResult(success=right, handled=right, auth_data=data)


def protocol():
    context = None
    if "starttls" in moods:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
    login = "login" in moods
    return SMTP(Mailbox(), hostname="test", tls_context=context, require_starttls=context is not None,
                authenticator=authenticate if login else None, auth_required=login,
                auth_require_tls=login and context is not None,
                data_size_limit=1000 if "small" in moods else 2**30)


async def silent(reader, writer):
    await reader.read()
    writer.close()


async def hang_up(reader, writer):
    writer.write(b"220 test\r\n")
    await writer.drain()
    await reader.readline()
    writer.close()


async def talk_until(reader, writer, last, answer):
    """Agrees to everything up to a command, answers that, and neither reads nor says anything more."""
    writer.write(b"220 test\r\n")
    while True:
        command = (await reader.readline()).upper()
        if not command:
            return
        if command.startswith(last):
            writer.write(answer)
            await asyncio.sleep(3600)
        writer.write(b"250-test\r\n250 STARTTLS\r\n" if command.startswith(b"EHLO") else b"250 OK\r\n")


async def stop_reading(reader, writer):
    await talk_until(reader, writer, b"DATA", b"354 go on\r\n")


async def tls_stall(reader, writer):
    await talk_until(reader, writer, b"STARTTLS", b"220 go on\r\n")


async def busy(reader, writer):
    writer.write(b"421 4.3.2 Too busy today\r\n")
    await writer.drain()
    writer.close()


async def main():
    loop = asyncio.get_running_loop()
    raw = {"silent": silent, "hang-up": hang_up, "busy": busy, "stop-reading": stop_reading, "tls-stall": tls_stall}
    wanted = [raw[mood] for mood in moods if mood in raw]
    if wanted:
        server = await asyncio.start_server(wanted[0], "127.0.0.1", 0)
    else:
        context = None
        if "tls" in moods:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(certificate, key)
        server = await loop.create_server(protocol, "127.0.0.1", 0, ssl=context)
    print(server.sockets[0].getsockname()[1], flush=True)
    await loop.run_in_executor(None, sys.stdin.read)
    os._exit(0)  # connections that stall would be waited for


asyncio.run(main())

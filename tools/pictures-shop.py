"""A shop and an auction house on loopback, for tools/pictures. Prints its address, and then each
time a page is asked for gives the next price.
"""

import datetime
import http.server
import itertools
import json

ARTICLES = {
    "lampe": ("Tischlampe Luna", ["49.90", "44.90"], "InStock", "Lichthaus am Markt", None),
    "stehlampe": ("Stehleuchte Arco, gebürstet", ["129.00", "119.00"], "InStock",
                  "Lichthaus am Markt", None),
    "sessel": ("Ohrensessel Lotte, senfgelb", ["399.00", "389.00"], "PreOrder", "Möbel Krüger",
               None),
    "kaffeemuehle": ("Kaffeemühle Mokka", ["89.00", "79.00"], "InStock", "Küchenfreund", None),
    "waage": ("Küchenwaage, mechanisch", ["24.95", "24.95"], "OutOfStock", "Küchenfreund", None),
    "wanduhr": ("Wanduhr, um 1960", ["12.50", "18.50"], "InStock", "uhrenfreund", 26),
    "kamera": ("Sucherkamera mit Tasche", ["74.00", "81.00"], "InStock", "dachbodenfund", 51),
    "radio": ("Röhrenradio, spielt", ["35.00", "42.00"], "InStock", "dachbodenfund", 75),
}
PRICES = {path: itertools.chain(article[1], itertools.repeat(article[1][-1]))
          for path, article in ARTICLES.items()}
START = datetime.datetime.now().replace(minute=15, second=0, microsecond=0)


def page(path):
    name, _, availability, seller, hours = ARTICLES[path]
    offer = {"@type": "Offer", "price": next(PRICES[path]), "priceCurrency": "EUR",
             "availability": "https://schema.org/" + availability,
             "seller": {"@type": "Organization", "name": seller}}
    if hours is not None:
        offer["availabilityEnds"] = (START + datetime.timedelta(hours=hours)).isoformat()
    product = {"@context": "https://schema.org", "@type": "Product", "name": name, "offers": offer}
    return ('<!DOCTYPE html><html lang="de"><head><title>%s</title>'
            '<script type="application/ld+json">%s</script></head></html>'
            % (name, json.dumps(product)))


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        path = self.path.strip("/")
        body = page(path).encode() if path in ARTICLES else b""
        self.send_response(200 if body else 404)
        self.send_header("Content-Type", "text/html; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
print("http://127.0.0.1:%d" % server.server_port, flush=True)
server.serve_forever()

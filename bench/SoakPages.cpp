#include "bench/SoakPages.h"

#include "tests/e2e/LoopbackServer.h"

#include <QBuffer>
#include <QImage>

using namespace Qt::StringLiterals;

const QStringList& soakPages()
{
    static const QStringList paths = {u"/text"_s, u"/frames"_s, u"/image"_s, u"/titles"_s};
    return paths;
}

void scriptSoakPages(LoopbackServer& server)
{
    server.answer(u"/text"_s, {.body = "Nur Text\n", .type = "text/plain"});
    server.page(u"/frames"_s, "<title>Rahmen</title><iframe src=/text></iframe>"
                              "<iframe src=/titles></iframe><iframe src=/image></iframe>");
    QBuffer image;
    image.open(QIODevice::WriteOnly);
    QImage picture(800, 600, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    picture.save(&image, "PNG");
    server.answer(u"/image"_s, {.body = image.data(), .type = "image/png"});
    server.page(u"/titles"_s, "<title>0</title><p>Titel<script>let n = 0; const step = () => {"
                              "document.title = 'Titel ' + ++n; if (n < 20) setTimeout(step, 10) };"
                              "step()</script>");
    server.page(u"/opener"_s, "<title>Vater</title><script>open('/frames')</script>");
    server.answer(u"/endless"_s, {.body = QByteArray(4000, 'x'), .sent = 2000});
}

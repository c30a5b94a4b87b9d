// picture_colours PICTURE COLOUR...: fails on the first colour that no pixel has.
#include <QColor>
#include <QImage>

#include <cstdio>

int main(int count, char **words)
{
    const QImage picture(QString::fromLocal8Bit(words[1]));
    for (int word = 2; word < count; ++word) {
        const QRgb colour = QColor(QString::fromLatin1(words[word])).rgb();
        int pixels = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                pixels += picture.pixel(x, y) == colour ? 1 : 0;
            }
        }
        std::printf("%s: %d pixels\n", words[word], pixels);
        if (pixels == 0) {
            return 1;
        }
    }
    return 0;
}

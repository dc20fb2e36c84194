// What the figures of a benchmark depend on besides the machine: the versions of
// Qt and the compiler, and what draws.
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <cstdio>

namespace {

QByteArray renderer()
{
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!context.create() || !context.makeCurrent(&surface))
        return "software (no OpenGL)";
    const QByteArray name(
        reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER)));
    const bool isSoftware = name.contains("llvmpipe") || name.contains("softpipe");
    return name + (isSoftware ? " (software)" : "");
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    std::printf("Qt %s, compiler %s\n", qVersion(), __VERSION__);
    std::printf("Graphics: %s\n", renderer().constData());
    return 0;
}

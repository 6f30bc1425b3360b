// The OpenGL model window: a mesh of the patterns lit and turned by the mouse, with its
// axes painted over it, an animation, and pictures rendered off screen at any size.
#include <QActionGroup>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFormLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>
#include <QPainter>
#include <QStatusBar>
#include <QTimer>
#include <QWheelEvent>
#include <cmath>
#include <fstream>
#include <memory>
#include <sstream>

#include "app/present.h"
#include "app/present_gl.h"

namespace zendrite {

namespace {

// OpenGL 3.3 core, or ES 3 where the machine has only that (Qt picks by the platform).
QSurfaceFormat model_format() {
    QSurfaceFormat f;
    if (QOpenGLContext::openGLModuleType() == QOpenGLContext::LibGLES) {
        f.setRenderableType(QSurfaceFormat::OpenGLES);
        f.setVersion(3, 0);
    } else {
        f.setVersion(3, 3);
        f.setProfile(QSurfaceFormat::CoreProfile);
    }
    f.setDepthBufferSize(24);
    return f;
}

const char* kVertex = R"(
in vec3 position;
in vec3 normal;
in vec3 colour;
in float row;
uniform mat4 mvp;
uniform mat4 view;
uniform float highlight;
uniform float point_size;
out vec3 v_normal;
out vec3 v_colour;
out vec3 v_eye;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    gl_PointSize = point_size;
    v_normal = mat3(view) * normal;
    v_eye = (view * vec4(position, 1.0)).xyz;
    v_colour = abs(row - highlight) < 0.5 ? vec3(1.0, 0.25, 0.2) : colour;
}
)";

const char* kFragment = R"(
in vec3 v_normal;
in vec3 v_colour;
in vec3 v_eye;
uniform vec3 light;
uniform vec3 amounts;
uniform int flat_shade;
uniform int lit;
out vec4 frag;
void main() {
    vec3 n = flat_shade == 1 ? normalize(cross(dFdx(v_eye), dFdy(v_eye))) : normalize(v_normal);
    vec3 to_eye = normalize(-v_eye);
    if (dot(n, to_eye) < 0.0) n = -n;
    float d = max(dot(n, light), 0.0);
    float s = pow(max(dot(reflect(-light, n), to_eye), 0.0), 32.0);
    vec3 c = lit == 1 ? v_colour * (amounts.x + amounts.y * d) + vec3(amounts.z * s) : v_colour;
    frag = vec4(min(c, vec3(1.0)), 1.0);
}
)";

QString tick_text(double v, double step) {
    const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
    return QString::number(v, 'f', std::min(decimals, 6));
}

// The model is drawn off screen (a context of its own on an off-screen surface) and the
// picture shown: the same route for the window, its pictures at any size and the
// scripted mode, on every platform that gives a context.
class GL_MODEL_WIDGET : public QWidget, protected QOpenGLExtraFunctions {
public:
    GL_MODEL_LINK link;
    GL_VIEW_TYPE view;
    GL_MESH_TYPE mesh;
    float highlight = 0;
    bool ok = false;
    std::string failure;
    std::function<void()> changed;  // after the view moved: the status bar

    explicit GL_MODEL_WIDGET(QWidget* parent) : QWidget(parent) {
        setMinimumSize(320, 240);
        setFocusPolicy(Qt::StrongFocus);
        ctx_.setFormat(model_format());
        surface_.setFormat(model_format());
        surface_.create();
        if (!ctx_.create() || !surface_.isValid() || !ctx_.makeCurrent(&surface_)) {
            failure = "No OpenGL on this machine: Graph 3D Surface shows the same data in software";
            return;
        }
        initializeOpenGLFunctions();
        init_program();
        ctx_.doneCurrent();
    }
    ~GL_MODEL_WIDGET() override {
        if (ctx_.makeCurrent(&surface_)) {
            fbo_.reset(), vao_.reset(), program_.reset(), buffers_.clear();
            ctx_.doneCurrent();
        }
    }

    // The mesh for the present view at what the window can show: a cell of two pixels, the
    // size at which a lit surface looks smooth and a software renderer still turns it.
    void Rebuild() {
        const int cols = std::clamp((width() > 0 ? width() : 800) / 2, 64, 1200);
        const int rows = std::clamp((height() > 0 ? height() : 600) / 2, 32, 1000);
        if (link.build) link.build(view, rows, cols, mesh);
        dirty_ = true;
        update();
    }

    // The model drawn into an image of w x h pixels, axes included; null when it cannot be.
    QImage Render_Image(int w, int h, bool axes = true) {
        if (!ok || !ctx_.makeCurrent(&surface_)) return {};
        if (!fbo_ || fbo_->size() != QSize(w, h)) {
            QOpenGLFramebufferObjectFormat f;
            f.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
            fbo_ = std::make_unique<QOpenGLFramebufferObject>(w, h, f);
        }
        QImage image;
        if (fbo_->isValid() && fbo_->bind()) {
            draw(w, h);
            image = fbo_->toImage(true).convertToFormat(QImage::Format_RGB32);
            fbo_->release();
        }
        ctx_.doneCurrent();
        if (axes && !image.isNull()) {
            QPainter p(&image);
            paint_axes(p, w, h);
        }
        return image;
    }

    // N frames turning by 3 degrees at the window's size, each read back as it is shown;
    // the seconds they took.
    double Time_Frames(int n) {
        QElapsedTimer t;
        t.start();
        for (int k = 0; k < n; ++k) {
            view.rotation += 3;
            Render_Image(std::max(width(), 16), std::max(height(), 16));
        }
        update();
        return static_cast<double>(t.nsecsElapsed()) * 1e-9;
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        const QImage image = Render_Image(std::max(width(), 16), std::max(height(), 16), false);
        if (!image.isNull()) p.drawImage(0, 0, image);
        paint_axes(p, width(), height());
    }

    void mousePressEvent(QMouseEvent* e) override { last_ = e->position(); }
    void mouseMoveEvent(QMouseEvent* e) override {
        if (!(e->buttons() & Qt::LeftButton)) return;
        const QPointF d = e->position() - last_;
        last_ = e->position();
        view.rotation += 0.5 * d.x();
        view.elevation = std::clamp(view.elevation + 0.5 * d.y(), -89.0, 89.0);
        moved();
    }
    void wheelEvent(QWheelEvent* e) override {
        view.zoom = std::clamp(view.zoom * std::pow(1.1, e->angleDelta().y() / 120.0), 0.05, 50.0);
        moved();
    }

public:
    void moved() {
        if (changed) changed();
        update();
    }

private:
    QOpenGLContext ctx_;
    QOffscreenSurface surface_;
    std::unique_ptr<QOpenGLFramebufferObject> fbo_;

    void init_program() {
        const QSurfaceFormat f = ctx_.format();
        const bool es = ctx_.isOpenGLES();
        if (es ? f.majorVersion() < 3 : (f.majorVersion() < 3 || (f.majorVersion() == 3 && f.minorVersion() < 3))) {
            failure = "OpenGL " + std::to_string(f.majorVersion()) + "." + std::to_string(f.minorVersion()) +
                      " is too old for the model (3.3 is needed): Graph 3D Surface shows the same data in software";
            return;
        }
        const QByteArray head = es ? "#version 300 es\nprecision highp float;\n" : "#version 330 core\n";
        program_ = std::make_unique<QOpenGLShaderProgram>();
        if (!program_->addShaderFromSourceCode(QOpenGLShader::Vertex, head + kVertex) ||
            !program_->addShaderFromSourceCode(QOpenGLShader::Fragment, head + kFragment) || !program_->link()) {
            failure = "The OpenGL shaders could not be built: " + program_->log().toStdString();
            return;
        }
        vao_ = std::make_unique<QOpenGLVertexArrayObject>();
        vao_->create();
        for (int k = 0; k < 5; ++k)
            buffers_.push_back(std::make_unique<QOpenGLBuffer>(k < 4 ? QOpenGLBuffer::VertexBuffer : QOpenGLBuffer::IndexBuffer));
        for (auto& b : buffers_) b->create();
        ok = true;
    }

private:
    std::unique_ptr<QOpenGLShaderProgram> program_;
    std::unique_ptr<QOpenGLVertexArrayObject> vao_;
    std::vector<std::unique_ptr<QOpenGLBuffer>> buffers_;
    bool dirty_ = true;
    QPointF last_;

    QMatrix4x4 view_matrix() const {
        QMatrix4x4 m;
        m.translate(0, 0, static_cast<float>(-6.0 / view.zoom));
        m.rotate(static_cast<float>(view.elevation), 1, 0, 0);
        m.rotate(static_cast<float>(view.rotation), 0, 1, 0);
        m.translate(0, static_cast<float>(-view.height / 2), 0);
        return m;
    }
    QMatrix4x4 projection(int w, int h) const {
        QMatrix4x4 p;
        p.perspective(30.0f, static_cast<float>(w) / static_cast<float>(std::max(h, 1)), 0.1f, 100.0f);
        return p;
    }

    void upload() {
        if (!dirty_ || !vao_) return;
        QOpenGLVertexArrayObject::Binder bind(vao_.get());
        program_->bind();
        const std::vector<float>* arrays[] = {&mesh.position, &mesh.normal, &mesh.colour, &mesh.row};
        const char* names[] = {"position", "normal", "colour", "row"};
        for (int k = 0; k < 4; ++k) {
            buffers_[static_cast<std::size_t>(k)]->bind();
            buffers_[static_cast<std::size_t>(k)]->allocate(arrays[k]->data(), static_cast<int>(arrays[k]->size() * sizeof(float)));
            const int at = program_->attributeLocation(names[k]);
            if (at < 0) continue;
            program_->enableAttributeArray(at);
            program_->setAttributeBuffer(at, GL_FLOAT, 0, k < 3 ? 3 : 1);
        }
        buffers_[4]->bind();
        buffers_[4]->allocate(mesh.index.data(), static_cast<int>(mesh.index.size() * sizeof(unsigned)));
        dirty_ = false;
    }

    void draw(int w, int h) {
        glViewport(0, 0, w, h);
        glClearColor(0.97f, 0.97f, 0.96f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (!ok || !program_ || mesh.index.empty()) return;
        upload();
        glEnable(GL_DEPTH_TEST);
        if (!ctx_.isOpenGLES()) glEnable(0x8642);  // GL_PROGRAM_POINT_SIZE
        program_->bind();
        const QMatrix4x4 v = view_matrix();
        program_->setUniformValue("mvp", projection(w, h) * v);
        program_->setUniformValue("view", v);
        program_->setUniformValue("highlight", highlight);
        program_->setUniformValue("point_size", 2.0f);
        // the light in the viewer's frame: its azimuth to the right, its elevation up
        const double a = view.light_azimuth * M_PI / 180, e = view.light_elevation * M_PI / 180;
        program_->setUniformValue("light", QVector3D(static_cast<float>(std::sin(a) * std::cos(e)), static_cast<float>(std::sin(e)),
                                                     static_cast<float>(std::cos(a) * std::cos(e))));
        program_->setUniformValue("amounts", QVector3D(static_cast<float>(view.ambient), static_cast<float>(view.diffuse),
                                                       static_cast<float>(view.specular)));
        program_->setUniformValue("flat_shade", view.render == MODEL_RENDER::Flat ? 1 : 0);
        program_->setUniformValue("lit", mesh.primitive == GL_MESH_TYPE::Triangles ? 1 : 0);
        QOpenGLVertexArrayObject::Binder bind(vao_.get());
        const GLenum mode = mesh.primitive == GL_MESH_TYPE::Points ? GL_POINTS : mesh.primitive == GL_MESH_TYPE::Lines ? GL_LINES : GL_TRIANGLES;
        glDrawElements(mode, static_cast<GLsizei>(mesh.index.size()), GL_UNSIGNED_INT, nullptr);
    }

    // The box's floor and the three axes with ticks, projected with the model's matrices.
    void paint_axes(QPainter& p, int w, int h) const {
        const QMatrix4x4 m = projection(w, h) * view_matrix();
        auto at = [&](double x, double y, double z) {
            const QVector3D s = m.map(QVector3D(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)));
            return QPointF((s.x() + 1) * 0.5 * w, (1 - s.y()) * 0.5 * h);
        };
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(QPen(QColor(60, 60, 60), 1));
        const double top = view.height;
        const double corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
        for (int k = 0; k < 4; ++k)
            p.drawLine(at(corners[k][0], 0, corners[k][1]), at(corners[(k + 1) % 4][0], 0, corners[(k + 1) % 4][1]));
        p.drawLine(at(-1, 0, -1), at(-1, top, -1));
        QFont font = p.font();
        font.setPointSizeF(std::max(7.0, h / 70.0));
        p.setFont(font);
        auto axis = [&](double lo, double hi, auto place, const std::string& legend, QPointF shift) {
            const double step = Nice_Tick_Step(lo, hi, 5);
            if (step > 0)
                for (double v = std::ceil(lo / step - 1e-9) * step; v <= hi + 1e-9 * step; v += step) {
                    const double t = (v - lo) / (hi - lo);
                    const QPointF a = place(t);
                    p.drawText(QRectF(a + shift - QPointF(40, 8), QSizeF(80, 16)), Qt::AlignCenter, tick_text(v, step));
                }
            const QPointF mid = place(0.5) + shift * 2.4;
            p.drawText(QRectF(mid - QPointF(90, 9), QSizeF(180, 18)), Qt::AlignCenter, QString::fromStdString(legend));
        };
        axis(link.x_low, link.x_high, [&](double t) { return at(-1 + 2 * t, 0, 1); }, link.x_legend, QPointF(0, 16));
        axis(link.row_low, link.row_high, [&](double t) { return at(1, 0, -1 + 2 * t); }, link.row_legend, QPointF(36, 6));
        axis(link.z_low, link.z_high, [&](double t) { return at(-1, top * t, -1); }, link.z_legend, QPointF(-40, 0));
    }
};

class GL_MODEL_WINDOW : public QMainWindow {
public:
    GL_MODEL_WIDGET* gl = nullptr;
    QTimer turn, sweep;
    QElapsedTimer clock;

    GL_MODEL_WINDOW() {
        setWindowTitle("Zendrite OpenGL 3D model");
        setAttribute(Qt::WA_DeleteOnClose, false);
        gl = new GL_MODEL_WIDGET(this);
        setCentralWidget(gl);
        resize(1000, 750);
        gl->changed = [this] { status(); };
        build_menus();
        connect(&turn, &QTimer::timeout, this, [this] {
            const double dt = static_cast<double>(clock.restart()) / 1000.0;
            gl->view.rotation = std::fmod(gl->view.rotation + gl->view.turn_speed * dt, 360.0);
            gl->moved();
        });
        connect(&sweep, &QTimer::timeout, this, [this] {
            gl->highlight = gl->highlight >= static_cast<float>(gl->mesh.rows) ? 1.0f : gl->highlight + 1.0f;
            gl->update();
        });
    }

    void status() {
        statusBar()->showMessage(QString(" Rotation : %1   Elevation : %2   Zoom : %3")
                                     .arg(gl->view.rotation, 0, 'f', 0)
                                     .arg(gl->view.elevation, 0, 'f', 0)
                                     .arg(gl->view.zoom, 0, 'f', 2));
    }

    void Turn(bool on) {
        if (on) clock.start(), turn.start(30);
        else turn.stop();
    }
    void Sweep(bool on) {
        if (on) {
            gl->highlight = 1;
            sweep.start(std::max(20, 4000 / std::max(gl->mesh.rows, 1)));
        } else {
            sweep.stop();
            gl->highlight = 0;
            gl->update();
        }
    }

private:
    void build_menus() {
        QMenu* file = menuBar()->addMenu("&File");
        file->addAction("Save picture...", this, [this] {
            const QString f = QFileDialog::getSaveFileName(this, "Save picture", "model.png", "PNG (*.png)");
            if (!f.isEmpty() && !gl->Render_Image(gl->width() * 2, gl->height() * 2).save(f))
                QMessageBox::warning(this, "Zendrite", "The picture could not be written: " + f);
        });
        file->addAction("Save model (OBJ, PLY)...", this, [this] {
            const QString f = QFileDialog::getSaveFileName(this, "Save model", "model.obj", "Wavefront OBJ (*.obj);;PLY (*.ply)");
            std::string message;
            if (!f.isEmpty() && !gl->link.save_model(gl->mesh, f.toStdString(), message))
                QMessageBox::warning(this, "Zendrite", QString::fromStdString(message));
        });
        file->addAction("Save view settings...", this, [this] {
            const QString f = QFileDialog::getSaveFileName(this, "Save view", "model.view", "View (*.view)");
            if (!f.isEmpty()) std::ofstream(f.toStdString()) << gl->link.view_text(gl->view);
        });
        file->addAction("Load view settings...", this, [this] {
            const QString f = QFileDialog::getOpenFileName(this, "Load view", "", "View (*.view)");
            if (f.isEmpty()) return;
            std::ifstream in(f.toStdString());
            std::stringstream s;
            s << in.rdbuf();
            std::string message;
            const MODEL_RENDER before = gl->view.render;
            const bool log_before = gl->view.log;
            if (!gl->link.read_view(s.str(), gl->view, message)) QMessageBox::warning(this, "Zendrite", QString::fromStdString(message));
            else if (gl->view.render != before || gl->view.log != log_before) gl->Rebuild();
            gl->moved();
        });
        file->addSeparator();
        file->addAction("Close", QKeySequence::Close, this, [this] { close(); });

        QMenu* render = menuBar()->addMenu("&Render");
        auto* group = new QActionGroup(this);
        const char* names[] = {"Points", "Wire frame", "Flat shaded", "Smooth shaded", "Ribbons"};
        for (int k = 0; k < 5; ++k) {
            QAction* a = render->addAction(names[k]);
            a->setCheckable(true);
            a->setShortcut(QKeySequence(QString::number(k + 1)));
            group->addAction(a);
            if (static_cast<int>(gl->view.render) == k + 1) a->setChecked(true);
            connect(a, &QAction::triggered, this, [this, k] {
                gl->view.render = static_cast<MODEL_RENDER>(k + 1);
                gl->Rebuild();
            });
        }
        render->addSeparator();
        QAction* log = render->addAction("Log intensity");
        log->setCheckable(true);
        log->setShortcut(QKeySequence("L"));
        connect(log, &QAction::toggled, this, [this](bool on) {
            gl->view.log = on;
            gl->Rebuild();
        });
        render->addAction("Higher", QKeySequence("Ctrl+Up"), this, [this] { scale_height(1.25); });
        render->addAction("Lower", QKeySequence("Ctrl+Down"), this, [this] { scale_height(0.8); });
        QAction* grey = render->addAction("Grey scale");
        grey->setCheckable(true);
        connect(grey, &QAction::toggled, this, [this](bool on) {
            gl->view.colour_scale = on ? 2 : 1;
            gl->Rebuild();
        });

        QMenu* v = menuBar()->addMenu("&View");
        v->addAction("Reset view", QKeySequence("Home"), this, [this] {
            const GL_VIEW_TYPE d;
            gl->view.rotation = d.rotation, gl->view.elevation = d.elevation, gl->view.zoom = d.zoom;
            gl->moved();
        });
        v->addAction("Light...", this, [this] { light_dialog(); });

        QMenu* anim = menuBar()->addMenu("&Animate");
        QAction* t = anim->addAction("Turn");
        t->setCheckable(true);
        t->setShortcut(QKeySequence("T"));
        connect(t, &QAction::toggled, this, [this](bool on) { Turn(on); });
        QAction* s = anim->addAction("Sweep through the patterns");
        s->setCheckable(true);
        s->setShortcut(QKeySequence("S"));
        connect(s, &QAction::toggled, this, [this](bool on) { Sweep(on); });
        anim->addAction("Turning speed...", this, [this] {
            QDialog d(this);
            d.setWindowTitle("Turning speed");
            auto* form = new QFormLayout(&d);
            auto* speed = new QDoubleSpinBox(&d);
            speed->setRange(-720, 720);
            speed->setValue(gl->view.turn_speed);
            speed->setSuffix(" deg/s");
            form->addRow("Speed", speed);
            auto* bb = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &d);
            form->addRow(bb);
            connect(bb, &QDialogButtonBox::accepted, &d, &QDialog::accept);
            connect(bb, &QDialogButtonBox::rejected, &d, &QDialog::reject);
            if (d.exec() == QDialog::Accepted) gl->view.turn_speed = speed->value();
        });
        status();
    }

    void scale_height(double f) {
        gl->view.height = std::clamp(gl->view.height * f, 0.05, 5.0);
        gl->Rebuild();
    }

    void light_dialog() {
        QDialog d(this);
        d.setWindowTitle("Light");
        auto* form = new QFormLayout(&d);
        struct ROW {
            const char* label;
            double* at;
            double lo, hi;
        };
        GL_VIEW_TYPE& v = gl->view;
        const ROW rows[] = {{"Direction: azimuth (deg)", &v.light_azimuth, -180, 180},
                            {"Direction: elevation (deg)", &v.light_elevation, -90, 90},
                            {"Ambient", &v.ambient, 0, 1},
                            {"Diffuse", &v.diffuse, 0, 1},
                            {"Specular", &v.specular, 0, 1}};
        std::vector<QDoubleSpinBox*> boxes;
        for (const ROW& r : rows) {
            auto* b = new QDoubleSpinBox(&d);
            b->setRange(r.lo, r.hi);
            b->setSingleStep(r.hi > 1 ? 5 : 0.05);
            b->setValue(*r.at);
            form->addRow(r.label, b);
            boxes.push_back(b);
        }
        auto* bb = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &d);
        form->addRow(bb);
        connect(bb, &QDialogButtonBox::accepted, &d, &QDialog::accept);
        connect(bb, &QDialogButtonBox::rejected, &d, &QDialog::reject);
        if (d.exec() != QDialog::Accepted) return;
        for (std::size_t k = 0; k < boxes.size(); ++k) *rows[k].at = boxes[k]->value();
        gl->update();
    }
};

GL_MODEL_WINDOW*& window() {
    static GL_MODEL_WINDOW* w = nullptr;
    return w;
}

}  // namespace

bool GlModelOpen(const GL_MODEL_LINK& link, const GL_VIEW_TYPE& view, std::string& message) {
    if (!window()) window() = new GL_MODEL_WINDOW;
    GL_MODEL_WINDOW* w = window();
    if (!w->gl->ok) {
        message = w->gl->failure;
        GlModelClose();
        return false;
    }
    w->gl->link = link;
    w->gl->view = view;
    w->show();
    w->raise();
    w->gl->Rebuild();
    w->status();
    return true;
}

bool GlModelIsOpen() { return window() && window()->isVisible(); }

void GlModelClose() {
    if (!window()) return;
    window()->Turn(false);
    window()->Sweep(false);
    delete window();
    window() = nullptr;
}

bool GlModelCommand(const std::vector<std::string>& w, std::string& message) {
    if (!window()) {
        message = "The OpenGL window is not open";
        return false;
    }
    GL_MODEL_WIDGET* gl = window()->gl;
    auto number = [&](std::size_t k, double& v) {
        if (k >= w.size()) return false;
        char* end = nullptr;
        v = std::strtod(w[k].c_str(), &end);
        return end != w[k].c_str() && *end == '\0' && std::isfinite(v);
    };
    const std::string cmd = w.empty() ? "" : w[0];
    double v = 0;
    if (cmd == "render" && w.size() == 2) {
        const char* names[] = {"points", "wire", "flat", "smooth", "ribbons"};
        for (int k = 0; k < 5; ++k)
            if (w[1] == names[k]) {
                gl->view.render = static_cast<MODEL_RENDER>(k + 1);
                gl->Rebuild();
                return true;
            }
    } else if ((cmd == "rotation" || cmd == "elevation" || cmd == "zoom" || cmd == "height") && number(1, v)) {
        if (cmd == "rotation") gl->view.rotation = v;
        else if (cmd == "elevation") gl->view.elevation = std::clamp(v, -89.0, 89.0);
        else if (cmd == "zoom") gl->view.zoom = std::clamp(v, 0.05, 50.0);
        else gl->view.height = std::clamp(v, 0.05, 5.0), gl->Rebuild();
        gl->moved();
        return true;
    } else if (cmd == "log" && w.size() == 2) {
        gl->view.log = w[1] == "on";
        gl->Rebuild();
        return true;
    } else if (cmd == "picture" && (w.size() == 2 || w.size() == 4)) {
        double pw = gl->width() * 2.0, ph = gl->height() * 2.0;
        if (w.size() == 4 && (!number(2, pw) || !number(3, ph) || pw < 16 || ph < 16 || pw > 8000 || ph > 8000)) {
            message = "A picture is 16 to 8000 pixels wide and high";
            return false;
        }
        const QImage img = gl->Render_Image(static_cast<int>(pw), static_cast<int>(ph));
        if (img.isNull() || !img.save(QString::fromStdString(w[1]))) {
            message = "The picture could not be written: " + w[1];
            return false;
        }
        return true;
    } else if (cmd == "model" && w.size() == 2) {
        return gl->link.save_model(gl->mesh, w[1], message);
    } else if (cmd == "view" && w.size() == 3 && (w[1] == "save" || w[1] == "load")) {
        if (w[1] == "save") {
            std::ofstream out(w[2]);
            out << gl->link.view_text(gl->view);
            if (!out) message = "The view could not be written: " + w[2];
            return static_cast<bool>(out);
        }
        std::ifstream in(w[2]);
        std::stringstream s;
        s << in.rdbuf();
        if (!in) {
            message = "The view file cannot be read: " + w[2];
            return false;
        }
        if (!gl->link.read_view(s.str(), gl->view, message)) return false;
        gl->Rebuild();
        return true;
    } else if ((cmd == "turn" || cmd == "sweep") && w.size() == 2) {
        cmd == "turn" ? window()->Turn(w[1] == "on") : window()->Sweep(w[1] == "on");
        return true;
    } else if (cmd == "frames" && number(1, v) && v >= 1) {
        const double s = gl->Time_Frames(static_cast<int>(v));
        message = "frames " + std::to_string(static_cast<int>(v)) + " in " + std::to_string(s) + " s: " +
                  std::to_string(v / std::max(s, 1e-9)) + " per second";
        return true;
    } else if (cmd == "close" && w.size() == 1) {
        GlModelClose();
        return true;
    }
    message = "gl: not understood";
    return false;
}

}  // namespace zendrite

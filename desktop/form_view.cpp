#include "desktop/form_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "desktop/gestures.h"
#include "desktop/layouts.h"
#include "screen/result_line.h"

namespace desktop {

using screen::Control;

/// The frame round the focused widget, the same for every kind, so that the eye finds the place at once.
class FocusRing : public QWidget {
  public:
    explicit FocusRing(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0x1f6fd0), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
};

FormView::FormView(screen::Form& form, std::function<void()> closeAsked, QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), form_(&form), closeAsked_(std::move(closeAsked)) {
    setObjectName(form.Name());
    setFocusPolicy(Qt::NoFocus);
    area_ = new QScrollArea(this);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setWidgetResizable(true);
    content_ = new QWidget(area_);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(area_);
    gestures_ = std::make_unique<Gestures>(*this);
    MakeWidgets();
    area_->setWidget(content_);
    for (const QScrollBar* bar : {area_->horizontalScrollBar(), area_->verticalScrollBar()})
        connect(bar, &QScrollBar::rangeChanged, this, [this] { ShowFocused(); });
    ring_ = new FocusRing(content_);
    form.watcher = this;
    FormChanged();
    FitToDisplay();
    SyncFocus();
}

FormView::~FormView() {
    Detach();
}

void FormView::MakeWidgets() {
    const QScopedValueRollback<int> drawing(drawing_, drawing_ + 1);
    WidgetShelf shelf(*form_);
    for (const auto& control : form_->Controls()) {
        const ControlWidget widget = MakeControlWidget(*control, content_);
        widgets_.insert(control.get(), widget);
        shelf.Put(widget);
        gestures_->Watch(widget);
        if (!control->shortcut.isEmpty()) widget.whole->setToolTip(control->shortcut);
    }
    installEventFilter(gestures_.get());
    PlaceResult(shelf.TakeAs("result", screen::kResultItem));
    LayOut(shelf, *content_);
    for (const auto& control : form_->Controls())
        Draw(*control);
}

/// What became of a command is in sight however far the content is scrolled.
void FormView::PlaceResult(QWidget* line) {
    if (!line) return;
    foot_ = new QWidget(this);
    auto* row = new QVBoxLayout(foot_);
    row->setContentsMargins(10, 0, 10, 6);
    row->addWidget(line);
    layout()->addWidget(foot_);
}

void FormView::FitToDisplay() {
    // A size told before the style sheet is applied would be too small for it.
    for (QWidget* widget : findChildren<QWidget*>())
        widget->ensurePolished();
    content_->layout()->invalidate();
    content_->layout()->activate();
    QSize size = content_->sizeHint().expandedTo(content_->minimumSize()) + QSize(2, 2);
    if (foot_) size.rheight() += foot_->sizeHint().height();
    if (const QScreen* display = QWidget::screen()) size = size.boundedTo(display->availableSize());
    resize(size);
    if (const QWidget* below = parentWidget()) move(below->geometry().center() - rect().center());
}

void FormView::Detach() {
    form_ = nullptr;
    widgets_.clear();
}

const ControlWidget* FormView::WidgetOf(const Control& control) const {
    const auto found = widgets_.constFind(&control);
    return found == widgets_.cend() ? nullptr : &*found;
}

QWidget* FormView::FocusTarget() {
    const Control* focused = form_ ? form_->Focused() : nullptr;
    const ControlWidget* widget = focused ? WidgetOf(*focused) : nullptr;
    const bool canHold = widget && focused->EffectivelyVisible() && EnabledToDraw(*focused);
    return canHold ? widget->keys : this;
}

void FormView::SyncFocus() {
    if (!form_) return;
    const QScopedValueRollback<int> drawing(drawing_, drawing_ + 1);
    QWidget* target = FocusTarget();
    const bool moved = focusWidget() != target && !(target == this && !focusWidget());
    if (moved) {
        target->setFocus(Qt::OtherFocusReason);
        ShowFocused();
    }
    if (auto* line = qobject_cast<QLineEdit*>(target)) {
        if (form_->WholeTextSelected() && line->selectedText() != line->text()) line->selectAll();
    } else if (auto* memo = qobject_cast<QPlainTextEdit*>(target); memo && moved) {
        memo->moveCursor(QTextCursor::End);
    }
    PlaceRing();
}

void FormView::ShowFocused() {
    const QWidget* target = FocusTarget();
    if (target == this) return;
    // The whole item, not only its cursor; of one larger than the window as much as fits.
    constexpr int kMargin = 8;
    const QSize room = area_->viewport()->size() / 2;
    const QSize half = (target->size() / 2 + QSize(kMargin, kMargin)).boundedTo(room);
    const QPoint centre = target->mapTo(content_, target->rect().center());
    area_->ensureVisible(centre.x(), centre.y(), half.width(), half.height());
}

void FormView::PlaceRing() {
    QWidget* target = FocusTarget();
    const bool shows = target != this && target->width() > 3 && target->height() > 3;
    ring_->setVisible(shows);
    if (!shows) return;
    const QPoint corner = target->mapTo(content_, QPoint(0, 0));
    ring_->setGeometry(QRect(corner, target->size()).adjusted(-2, -2, 2, 2));
    ring_->raise();
}

void FormView::ShowOverlay(const QString& notice) {
    if (!overlay_) {
        overlay_ = new QLabel(this);
        overlay_->setObjectName(QStringLiteral("overlay"));
        overlay_->setTextFormat(Qt::PlainText);
        overlay_->setMargin(12);
    }
    overlay_->setText(notice);
    overlay_->setVisible(!notice.isEmpty());
    setCursor(notice.isEmpty() ? Qt::ArrowCursor : Qt::BusyCursor);
    PlaceOverlay();
}

void FormView::PlaceOverlay() {
    if (!overlay_) return;
    constexpr int kFromTop = 64;
    overlay_->adjustSize();
    overlay_->move((width() - overlay_->width()) / 2, kFromTop);
    overlay_->raise();
}

void FormView::Draw(const Control& control) {
    const ControlWidget* widget = WidgetOf(control);
    if (!widget) return;
    const QScopedValueRollback<int> drawing(drawing_, drawing_ + 1);
    DrawControl(*widget);
}

void FormView::ControlChanged(Control& control) {
    if (!form_) return;
    Draw(control);
    if (control.Kind() == screen::ControlKind::SSTab)
        for (const auto& other : form_->Controls())
            if (other->container == &control) Draw(*other);
    SyncFocus();
}

void FormView::FocusChanged() {
    if (!form_) return;
    // A postcode is drawn otherwise while it is being typed.
    if (ringed_ && WidgetOf(*ringed_)) Draw(*ringed_);
    ringed_ = form_->Focused();
    if (ringed_) Draw(*ringed_);
    SyncFocus();
}

void FormView::FormChanged() {
    if (form_) setWindowTitle(form_->Caption());
}

void FormView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Only now the items have their places.
    content_->layout()->activate();
    ShowFocused();
}

void FormView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    PlaceOverlay();
}

void FormView::closeEvent(QCloseEvent* event) {
    if (!form_) return;
    event->ignore();
    // What is still being composed belongs to the item that the user wrote it into.
    QGuiApplication::inputMethod()->commit();
    if (form_->Enabled()) closeAsked_();
}

}  // namespace desktop

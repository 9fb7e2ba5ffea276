// A picture that is a button. It fades for a moment when the pointer enters it.
#pragma once

#include <QAbstractButton>
#include <QTimer>
#include <QVariantAnimation>

#include <functional>

namespace ui {

class ImageButtonView : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString imageName READ imageName WRITE setImageName)

public:
    /// Between the picture and the edge of the button: forms put the picture on the grid.
    static constexpr int PADDING = 4;

    explicit ImageButtonView(QWidget* parent = nullptr);

    /// From here on the pointer's entering is watched.
    void initiate(int wantedId, bool wantedAnimated);

    void startFadeAnimation();
    void stopFadeAnimation();

    /// Shows the program's own picture of that name. Fatal where there is none.
    void setImageName(const QString& wantedName);

    QString imageName() const { return name; }

    QSize sizeHint() const override;

    int id = 0;
    bool animated = true;

    /// Called with the id, at the press of the button or of its key, or when an assistive tool
    /// activates it. A double click is one press: by the second the button may stand for something
    /// else.
    std::function<void(int)> onClick;

    /// Opacity of the picture, 0.3 at the depth of the fade.
    double alphaValue() const { return alpha; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void click() const;
    void fadeTo(double opacity);

    QString name;
    double alpha = 1.0;
    bool tracking = false;
    QVariantAnimation fade{this};
    QTimer fadeEnd{this};
};

} // namespace ui

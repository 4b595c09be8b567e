#ifndef QUORVANE_RECEIVEVIEWOPTIONS_H
#define QUORVANE_RECEIVEVIEWOPTIONS_H

#include <QObject>

class QCheckBox;
class QGridLayout;
class QRadioButton;
struct ViewSettings;

// The view's options in the session panel's receive group: "Hex+ASCII"
// under "Hex" (one more receive format for the screen; the data log keeps
// hex) and "ANSI Colours" under "Text". The group's other rows move down.
class ReceiveViewOptions : public QObject
{
    Q_OBJECT

public:
    // hexRadio: the group's "Hex" button, which the new ones follow.
    ReceiveViewOptions(QGridLayout *receiveGroup, QRadioButton *hexRadio, QObject *parent);

    // After the panel shows the receive format: Hex+ASCII is a kind of Hex.
    void show(const ViewSettings &settings, bool hexFormat);
    void copyTo(ViewSettings &settings) const;

private:
    QRadioButton *hexAsciiRadio;
    QCheckBox *ansiBox;
};

#endif

#pragma once

#include <QObject>
#include <QStringList>

class CommandBook;
class DataBox;
class History;
class ImageBox;
class SourceReader;
class StackConductor;
class XafsSpectrum;
class XafsView;
struct ImageStack;
struct Measurement;

/// Looks after what is taken off the counts or stands in their place: the dark image, the dark
/// areas of both stacks with their means, total I0, the bad pixels of all; and the background
/// spectrum, which is only shown.
class DarkConductor : public QObject
{
    Q_OBJECT
public:
    /// What it works on outlives it. bgView shows the background spectrum.
    DarkConductor(Measurement& data, const SourceReader& reader, DataBox& box, ImageBox& imageBox,
                  XafsView& bgView, StackConductor& stacks, QObject* parent = nullptr);

    void bindCommands(CommandBook& book);

    /// Reads the bad pixels that the configuration names; what was wrong with their file.
    static QStringList loadDefaultErrPoints(const QString& place);

    /// Dark counts that are taken off one pixel of an image of the stack.
    double darkLevel(const ImageStack& stack, int image, int x, int y) const;

public Q_SLOTS:
    void selectedDark(const QString& fname);
    void clearDark();
    void setI0DarkArea();
    void setI1DarkArea();
    void clearUpdateI0DarkArea();
    void clearUpdateI1DarkArea();
    void updateI0DarkArea();
    void updateI1DarkArea();
    void clearI0DarkArea();
    void clearI1DarkArea();
    void clearedBG();
    void selectedBG(const QString& fname);
    void newTotalI0ofI1File(const QString& fname);
    void newTotalI0ofI0File(const QString& fname);
    /// Whether images that are read from now on without a list of bad pixels of their own, such as
    /// the dark image, are corrected by the configuration's.
    void useErrPMaskToggled(bool f);

Q_SIGNALS:
    /// Spectra are formed in another way from now on.
    void conditionsChanged();

private:
    void connectBox();
    void connectStack(ImageStack& stack);
    void tellHistory(History& history) const;
    QStringList areaLines(const ImageStack& stack) const;
    void setDarkArea(ImageStack& stack);
    void fillDarkAverages(ImageStack& stack);
    void refillDarkAverages(ImageStack& stack);
    void refill(ImageStack& stack);
    void clearDarkArea(ImageStack& stack);
    static bool loadTotalI0(XafsSpectrum& total, const QString& fname);

    Measurement& data_;
    const SourceReader& reader_;
    DataBox& box_;
    ImageBox& imageBox_;
    XafsView& bgView_;
};

#pragma once

#include <QCoreApplication>
#include <QVector>

#include <memory>

class Analyzer;
class Analyzer2;
class BatchCtrl;
class CalibCtrl;
class DataBox;
class HistoryPanel;
class ImageBox;
class ImgProc;
class MapBook;
class Messages;
class QWidget;
class SaveBox;
class SaveDataCfg;
class SpectrumBox;
class XafsView;

/// All panels of the program. They are laid into docks, and end before these do.
struct Panels
{
    Q_DECLARE_TR_FUNCTIONS(Panels)
public:
    /// The maps of elements come and go in the book, which outlives the panels.
    explicit Panels(MapBook& book);
    ~Panels();

    /// Those that a user can show and hide, and that a screenshot finds by name or title.
    QVector<QWidget*> all() const;

    const std::unique_ptr<ImageBox> imageBox;
    const std::unique_ptr<DataBox> dataBox;
    const std::unique_ptr<SpectrumBox> spectrumBox;
    const std::unique_ptr<CalibCtrl> calibCtrl;
    const std::unique_ptr<Analyzer> analyzer; ///< owns its view, which has a dock of its own
    const std::unique_ptr<Analyzer2> analyzer2;
    const std::unique_ptr<SaveBox> saveBox;
    const std::unique_ptr<SaveDataCfg> saveDataCfg;
    const std::unique_ptr<XafsView> xafsView; ///< the spectrum at the cursor
    const std::unique_ptr<XafsView> bgView;   ///< the background spectrum
    const std::unique_ptr<ImgProc> imgProc;   ///< registration
    const std::unique_ptr<BatchCtrl> batchCtrl;
    const std::unique_ptr<Messages> messages;
    const std::unique_ptr<HistoryPanel> history;
};

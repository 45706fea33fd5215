#pragma once

#include <QCoreApplication>
#include <QVector>

#include <memory>

class Analyzer;
class BatchCtrl;
class CalibCtrl;
class Messages;
class QWidget;
class SaveDataCfg;
class XafsView;

/// The windows beside the main one.
struct Windows
{
    Q_DECLARE_TR_FUNCTIONS(Windows)
public:
    /// Makes all; the view of the spectrum at the cursor is shown at once.
    Windows();
    ~Windows();

    /// In the order in which their places are kept.
    QVector<QWidget*> all() const;

    const std::unique_ptr<BatchCtrl> batchCtrl;
    const std::unique_ptr<Analyzer> analyzer;
    const std::unique_ptr<XafsView> xafsView; ///< the spectrum at the cursor
    const std::unique_ptr<XafsView> bgView;   ///< the background spectrum
    const std::unique_ptr<CalibCtrl> calibCtrl;
    const std::unique_ptr<SaveDataCfg> saveDataCfg;
    const std::unique_ptr<Messages> messages;
};

#pragma once

#include "analysis/diagnostics/DarkCheck.h"
#include "maps/AnalyzeCond.h"

#include <QFrame>

#include <memory>

class CommandBook;
class NumberFields;
class RunRow;
class Ui_Analyzer2;

/// The panel of the diagnostics: conditions and outcome of the dark check, and whether images
/// without a list of bad pixels of their own are read with that of the configuration. It holds no
/// image, and checks nothing itself.
class Analyzer2 : public QFrame
{
    Q_OBJECT
public:
    explicit Analyzer2(QWidget* parent = nullptr);
    ~Analyzer2() override;

    DarkCheckSettings darkCheckSettings() const;
    /// The line of the dark check.
    RunRow& darkRun() const;
    /// What came of the last dark check, in people's words.
    void setDarkOutcome(const QString& words);

    void bindCommands(CommandBook& book);

public Q_SLOTS:
    /// Logs that it was asked: nothing is collected yet.
    void doCollectQInfo(const AnalyzeCond& ac);
    /// Off: there is no list to use, which the box then says.
    void setUseErrPMaskEnabled(bool f);
    void setUseErrPMaskChecked(bool f);
    bool useErrPMask() const;
    void setErrPMaskFileName(const QString& fname);

Q_SIGNALS:
    void startCollectQInfo();
    void askedDarkCheck();
    void useErrPMaskToggled(bool f);

private:
    Q_DISABLE_COPY(Analyzer2)

    void watchFields();
    void useErrPMaskByCommand(bool f);

    const std::unique_ptr<Ui_Analyzer2> ui_;
    NumberFields* numbers_;
};

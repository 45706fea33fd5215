#pragma once

#include "spectrum/SuggestElm.h"

#include <QGroupBox>

#include <memory>

class CmdLine;
class CommandBook;
class NumberFields;
class Ui_SpectrumBox;

/// What a block spectrum is formed and normalised by, as the user has set it.
struct SpectrumSettings
{
    int halfX = 0; ///< of the averaging block [pixels]
    int halfY = 0;
    bool useI0 = false;
    bool fluorescence = false;
    SuggestElm elm;
    bool suggestForRefs = false; ///< the suggestion goes for the references too
    bool holdGap = false;
};

/// The fields that say how the spectrum of a block is formed and where its edge is looked for. The
/// energy of the suggested edge follows element and edge, until it is overruled.
///
/// Numbers typed as text that can't be read count as 0.
class SpectrumBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit SpectrumBox(QWidget* parent = nullptr);
    ~SpectrumBox() override;

    SpectrumSettings settings() const;
    /// Names of the number fields that can't be read.
    QStringList unreadable() const;
    /// Divides by the I0 images or not, as by hand.
    void setUseI0(bool f);

    /// The commands that set its fields. Each acts as an edit by hand.
    void bindCommands(CommandBook& book);

Q_SIGNALS:
    /// The user is through with a field, or a switch or the edge is another.
    void changed();
    void holdGapChanged(bool f); ///< comes before changed()
    void useI0Changed(bool f);
    void fieldsChanged(); ///< a number field can or can't be read any more

private:
    void connectFields();
    void watchNumbers();
    void layOut();
    SuggestElm suggestElm() const;
    void refreshEdgeEnergy();
    void newElmSuggested();
    void newEdgeSuggested();
    void useSuggestion(bool f);
    QStringList suggestionLines() const;
    void suggestEdge(const CmdLine& cmd);

    std::unique_ptr<Ui_SpectrumBox> ui_;
    NumberFields* numbers_;
};

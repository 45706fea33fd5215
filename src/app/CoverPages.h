#pragma once

#include <QObject>

class FolderConductor;
class FolderQuestion;
class QWidget;
class StackConductor;
class ViewConductor;
class WelcomePage;
struct Measurement;

/// The pages that cover the image while there is none: how to begin, and what of a folder is to be
/// loaded.
class CoverPages : public QObject
{
    Q_OBJECT
public:
    /// The pages lie over `below`, which owns them.
    explicit CoverPages(QWidget& below);

    FolderQuestion& question() const { return *question_; }
    WelcomePage& welcome() const { return *welcome_; }

    /// From now on the welcome comes and goes by itself. Before, nothing covers the image: nobody
    /// is there to be welcomed.
    void follow(const Measurement& data, StackConductor& stacks, FolderConductor& folders,
                ViewConductor& view);

private:
    void showWelcome(bool wanted);

    WelcomePage* const welcome_;
    FolderQuestion* const question_;
};

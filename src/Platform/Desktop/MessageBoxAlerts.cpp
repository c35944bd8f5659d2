#include "Platform/Desktop/MessageBoxAlerts.h"

#include "Platform/DesktopWords.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace Platform {

namespace {

/// Both texts may hold the name of a file, and a file's name may look like HTML.
void showAsPlainText(QMessageBox& box)
{
    const auto labels = box.findChildren<QLabel*>();
    for (auto* const label : labels)
        label->setTextFormat(Qt::PlainText);
}

void addButtons(QMessageBox& box, const QStringList& names)
{
    for (const auto& name : names) {
        const bool isLast = box.buttons().size() == names.size() - 1;
        auto* const button = box.addButton(inDesktopWords(name),
            isLast && names.size() > 1 ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        button->setObjectName(name);
        if (box.defaultButton() == nullptr)
            box.setDefaultButton(button);
        if (isLast)
            box.setEscapeButton(button);
    }
}

} // namespace

void MessageBoxAlerts::present(const Alert& alert, Answer answer)
{
    auto* const box = new QMessageBox;
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setObjectName(QStringLiteral("alert"));
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(QApplication::applicationDisplayName());
    box->setText(inDesktopWords(alert.title));
    box->setInformativeText(inDesktopWords(alert.text));
    showAsPlainText(*box);
    addButtons(*box, alert.buttons);
    box->setWindowModality(Qt::ApplicationModal);
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    const auto last = static_cast<int>(alert.buttons.size()) - 1;
    QObject::connect(box, &QDialog::finished, box,
        [box, last, names = alert.buttons, answer = std::move(answer)] {
            const auto* const clicked = box->clickedButton();
            answer(
                clicked != nullptr ? static_cast<int>(names.indexOf(clicked->objectName())) : last);
        });
    box->show();
    box->raise();
    box->activateWindow();
}

} // namespace Platform

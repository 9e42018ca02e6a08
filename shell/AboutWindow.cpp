#include "shell/AboutWindow.h"

#include "shell/UserGuide.h"
#include "support/Desktop.h"

#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace tallyvox {

namespace {

QLabel* centredLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

AboutWindow::AboutWindow(Desktop& desktop, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AboutWindow"));
    setWindowTitle(tr("About Tallyvox"));
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(380);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 24, 32, 16);
    layout->setSpacing(8);
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg"))
                        .pixmap(64, 64));
    icon->setAlignment(Qt::AlignCenter);
    layout->addWidget(icon);

    QLabel* name = centredLabel(QStringLiteral("Tallyvox"), this);
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    name->setFont(big);
    layout->addWidget(name);
    QLabel* version = centredLabel(tr("Version %1").arg(QStringLiteral(TALLYVOX_VERSION)), this);
    version->setObjectName(QStringLiteral("version"));
    layout->addWidget(version);
    layout->addWidget(centredLabel(translated(productInfo::context, productInfo::summary), this));
    layout->addSpacing(8);
    layout->addWidget(centredLabel(QString::fromUtf16(productInfo::copyright), this));
    QLabel* licence = centredLabel(translated(productInfo::context, productInfo::licence), this);
    licence->setObjectName(QStringLiteral("licence"));
    layout->addWidget(licence);

    // There is no web site yet: the project's page is a section of the installed guide.
    const QUrl project = userGuideUrl(QString::fromLatin1(webAddresses::projectSection));
    auto* link = new QLabel(tr("<a href=\"%1\">The project's page</a> (in the user guide)")
                                .arg(QString::fromLatin1(project.toEncoded())),
                            this);
    link->setObjectName(QStringLiteral("projectLink"));
    link->setAlignment(Qt::AlignCenter);
    link->setToolTip(project.toLocalFile());
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(link, &QLabel::linkActivated, this,
            [&desktop](const QString& url) { desktop.openUrl(QUrl(url)); });
    layout->addWidget(link);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    layout->addSpacing(8);
    layout->addWidget(buttons);
}

} // namespace tallyvox

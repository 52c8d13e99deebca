#include "app/forms/ports/routing_page.h"

#include <algorithm>

#include "base/forms/labels.h"
#include "base/forms/qt_text.h"
#include "base/forms/theme.h"
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include "app/forms/ports/port_items.h"
#include "app/forms/texts.h"
#include "app/forms/transport/session_signals.h"

namespace tracksmith::forms {
namespace {

constexpr int kColumns = 4;

QString Named(const char* prefix, int channel) {
    return QStringLiteral("%1%2").arg(QLatin1String(prefix)).arg(channel, 2, 10, QLatin1Char('0'));
}

} // namespace

RoutingPage::RoutingPage(SessionSignals& session, QWidget* parent)
    : QWidget(parent), session_(session), reset_(new QPushButton) {
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(Gap());
    grid->setVerticalSpacing(Gap() / 2);
    constexpr int kRows = kChannels / kColumns;
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto index = static_cast<std::size_t>(channel);
        lines_[index] = NewLine(channel);
        const int row = channel % kRows;
        const int column = channel / kRows * 4;
        grid->addWidget(lines_[index].number, row, column);
        grid->addWidget(lines_[index].output, row, column + 1);
        grid->addWidget(lines_[index].target, row, column + 2);
        grid->setColumnStretch(column + 1, 1);
    }
    reset_->setObjectName(QStringLiteral("Btn_ResetRoutes"));
    grid->addWidget(reset_, kRows, 0, 1, 3, Qt::AlignLeft);
    grid->setRowStretch(kRows + 1, 1);
    connect(reset_, &QPushButton::clicked, this, [this] {
        session_.Controls().ResetRoutes();
        ShowRoutes();
    });
    connect(&session, &SessionSignals::PortsChanged, this, &RoutingPage::ShowRoutes);
}

RoutingPage::Line RoutingPage::NewLine(int channel) {
    Line line{NewLabel("", this), new QComboBox, new QSpinBox};
    line.number->setObjectName(Named("L_Route", channel));
    line.number->setText(QString::number(channel + 1));
    line.number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    line.number->setBuddy(line.output);
    line.output->setObjectName(Named("CB_RouteOutput", channel));
    line.output->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    line.output->setMinimumContentsLength(12);
    line.target->setObjectName(Named("E_RouteTarget", channel));
    line.target->setRange(1, kChannels);
    line.target->setKeyboardTracking(false);
    connect(line.output, &QComboBox::activated, this, [this, channel] { TakeRoute(channel); });
    connect(line.target, &QSpinBox::valueChanged, this, [this, channel] { TakeRoute(channel); });
    return line;
}

void RoutingPage::ShowRoutes() {
    const auto outputs = session_.Controls().Player().OutputDevices();
    for (std::size_t channel = 0; channel < lines_.size(); ++channel) {
        const Line& line = lines_[channel];
        const QSignalBlocker silentOutput(line.output);
        const QSignalBlocker silentTarget(line.target);
        const session::OutputChoice::ChannelRoute route =
            session_.Controls().Outputs().Route(channel);
        FillWithOutputs(*line.output, outputs, language_);
        line.output->insertItem(0, InLanguage(texts::kCommonOutput, language_), QString());
        line.output->setCurrentIndex(std::max(0, line.output->findData(ToQString(route.output))));
        line.target->setValue(route.target + 1);
    }
}

void RoutingPage::TakeRoute(int channel) {
    const auto index = static_cast<std::size_t>(channel);
    const Line& line = lines_[index];
    session_.Controls().SetRoute(index, {line.output->currentData().toString().toStdString(),
                                         static_cast<std::uint8_t>(line.target->value() - 1)});
}

void RoutingPage::Retranslate(Language language) {
    language_ = language;
    reset_->setText(InLanguage(texts::kResetRoutes, language));
    for (int channel = 0; channel < kChannels; ++channel) {
        const Line& line = lines_[static_cast<std::size_t>(channel)];
        line.output->setAccessibleName(texts::RouteOutputName(channel, language));
        line.target->setAccessibleName(texts::RouteTargetName(channel, language));
        line.target->setPrefix(InLanguage(texts::kTargetChannel, language) + QLatin1Char(' '));
    }
    ShowRoutes();
}

} // namespace tracksmith::forms

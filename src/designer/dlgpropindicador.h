#pragma once

#include "library/dialogo.h"

#include <array>
#include <memory>

class EBarraProgreso;
class EIndicador;
class EMatrizGrafico;
class ESemaforo;
class Muestra;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QToolButton;
class QWidget;

// The modal dialog in which a user creates or edits one indicator: its name,
// its kind (progress bar, matrix and chart, traffic light) and the settings
// of that kind. It reads and writes the database only through the engine and
// the shared list loaders; Resultado holds the stored indicator's key after
// "&Aceptar" and 0 after "&Cancelar" or the close box.
class dlgPropIndicador : public Dialogo {
    Q_OBJECT

public:
    // The lamp colours that tell the light's direction.
    static constexpr int LamparaRoja = 0x000000FF;
    static constexpr int LamparaVerde = 0x0000FF00;

    explicit dlgPropIndicador(QWidget* parent = nullptr);
    ~dlgPropIndicador() override;

    // A new indicator in that perspective, offered as a progress bar.
    Q_INVOKABLE void Nuevo(int clavePerspectiva);
    // The stored indicator with that key; a key with no row leaves the
    // dialog empty, silently.
    Q_INVOKABLE void Edit(int clave);

private:
    // Layout and wiring (dlgpropindicador_ui.cpp).
    void construir();
    QWidget* construirSuperior();
    QWidget* construirBarra();
    QWidget* construirSemaforo();
    QWidget* construirMatriz();
    void conectar();

    // Opening and the kind panels (dlgpropindicador.cpp).
    void CargarListas();
    void MostrarPanel();
    void seleccionarOpcion(QRadioButton* opcion);
    void LlenarBarra(EBarraProgreso* configuracion);
    void LlenarSemaforo(ESemaforo* configuracion);
    void ElegirColor(Muestra* muestra);
    void cmdInvert_Click();

    // Accepting (dlgpropindicador_guardar.cpp).
    void cAceptar_Click();
    void Command17_Click();
    bool GuardarBarra(EBarraProgreso* configuracion);
    bool GuardarSemaforo(ESemaforo* configuracion);
    bool GuardarMatriz(EMatrizGrafico* configuracion);

    // The matrix and chart lists (dlgpropindicador_matriz.cpp).
    void LlenarMatriz(EMatrizGrafico* configuracion);
    void cTabM_Click(int pestana);
    QListWidget* listaActual() const;
    bool EstaEnLista(QListWidget* lista, int clave) const;
    void cAdd_Click();
    void Command3_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();

    // The configuration property of a period (0 day .. 3 year): "Dia" + "_Min".
    static QByteArray propiedad(int periodo, const char* sufijo);

    // The position selected in a list box, -1 when none: an entry that is
    // merely current (as after keyboard focus) does not count.
    static int indiceSeleccionado(const QListWidget* lista);
    static void seleccionarIndice(QListWidget* lista, int indice);
    // Blanks trimmed at both ends, as the validations compare names and titles.
    static QString recortarBlancos(const QString& texto);

    std::unique_ptr<EIndicador> m_indicador;

    // Upper area
    QFrame* pic1 = nullptr;
    QLineEdit* cNombre = nullptr;
    QRadioButton* opt1 = nullptr;
    QRadioButton* opt2 = nullptr;
    QRadioButton* opt3 = nullptr;
    QLabel* imgPreview = nullptr;
    QPushButton* cAceptar = nullptr;
    QPushButton* Command17 = nullptr;

    // Progress bar
    QFrame* picBarra = nullptr;
    QComboBox* cMetrica = nullptr;
    QTabWidget* sTabBarra = nullptr;
    std::array<QLineEdit*, 4> cMin{};
    std::array<QLineEdit*, 4> cMax{};
    std::array<Muestra*, 4> cColor{};
    std::array<Muestra*, 4> lblColorMin{};
    std::array<Muestra*, 4> lblColorMax{};

    // Traffic light
    QFrame* picSemaforo = nullptr;
    QComboBox* cMetrica2 = nullptr;
    std::array<Muestra*, 3> lblSemColor{};
    QPushButton* cmdInvert = nullptr;
    QTabWidget* sTabSemaforo = nullptr;
    // cL1 .. cL8: high and medium limit of each period in turn.
    std::array<QLineEdit*, 8> cL{};

    // Matrix and chart
    QFrame* picMatriz = nullptr;
    QListWidget* lstMetricas = nullptr;
    QTabWidget* cTabM = nullptr;
    QListWidget* lstSelMatriz = nullptr;
    QListWidget* lstGraf = nullptr;
    QLineEdit* cTitGraf = nullptr;
    QComboBox* cTipoGraf = nullptr;
    QToolButton* cAdd = nullptr;
    QToolButton* Command3 = nullptr;
    QToolButton* Command4 = nullptr;
    QToolButton* Command5 = nullptr;
    QPushButton* Command6 = nullptr;
    QPushButton* Command7 = nullptr;
};

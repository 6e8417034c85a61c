-- The nine VendimarBI tables for SQL Server. Safe to apply again: nothing is replaced.
-- Keys come from IDENTITY columns; identifiers compare case-insensitively under the default collation.

IF OBJECT_ID('ut_bi_Perspectiva', 'U') IS NULL
CREATE TABLE ut_bi_Perspectiva (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  uf_Nombre nvarchar(50),
  uf_Entidad nvarchar(50),
  uf_Grupos nvarchar(1024),
  uf_padre int
);

IF OBJECT_ID('ut_bi_Metrica', 'U') IS NULL
CREATE TABLE ut_bi_Metrica (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  Sys_GUID nvarchar(max),
  uf_Nombre nvarchar(50),
  uf_Descripcion nvarchar(255),
  uf_Titulo nvarchar(100),
  uf_Decimales int,
  uf_Formato nvarchar(50),
  uf_Codigo nvarchar(max),
  uf_FK_Perspectiva int
);

IF OBJECT_ID('ut_bi_Indicador', 'U') IS NULL
CREATE TABLE ut_bi_Indicador (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  uf_Nombre nvarchar(50),
  uf_Tipo int,
  uf_FK_Perspectiva int
);

IF OBJECT_ID('ut_bi_BarraProg', 'U') IS NULL
CREATE TABLE ut_bi_BarraProg (
  uf_FK_Indicador int,
  uf_FK_Metrica int,
  uf_Dia_Min float,
  uf_Dia_Max float,
  uf_Dia_Color int,
  uf_Dia_ColorDebajo int,
  uf_Dia_ColorArriba int,
  uf_Semana_Min float,
  uf_Semana_Max float,
  uf_Semana_Color int,
  uf_Semana_ColorDebajo int,
  uf_Semana_ColorArriba int,
  uf_Mes_Min float,
  uf_Mes_Max float,
  uf_Mes_Color int,
  uf_Mes_ColorDebajo int,
  uf_Mes_ColorArriba int,
  uf_Ano_Min float,
  uf_Ano_Max float,
  uf_Ano_Color int,
  uf_Ano_ColorDebajo int,
  uf_Ano_ColorArriba int
);

IF OBJECT_ID('ut_bi_Semaforo', 'U') IS NULL
CREATE TABLE ut_bi_Semaforo (
  uf_FK_Indicador int,
  uf_FK_Metrica int,
  uf_Dia_Lim1 float,
  uf_Dia_Lim2 float,
  uf_Semana_Lim1 float,
  uf_Semana_Lim2 float,
  uf_Mes_Lim1 float,
  uf_Mes_Lim2 float,
  uf_Ano_Lim1 float,
  uf_Ano_Lim2 float,
  uf_Invertido int
);

IF OBJECT_ID('ut_bi_MatrizGraf', 'U') IS NULL
CREATE TABLE ut_bi_MatrizGraf (
  uf_FK_Indicador int,
  uf_FK_M_Metrica1 int,
  uf_FK_M_Metrica2 int,
  uf_FK_M_Metrica3 int,
  uf_FK_M_Metrica4 int,
  uf_FK_M_Metrica5 int,
  uf_FK_M_Metrica6 int,
  uf_FK_M_Metrica7 int,
  uf_FK_M_Metrica8 int,
  uf_FK_M_Metrica9 int,
  uf_FK_M_Metrica10 int,
  uf_FK_G_Metrica1 int,
  uf_FK_G_Metrica2 int,
  uf_FK_G_Metrica3 int,
  uf_FK_G_Metrica4 int,
  uf_FK_G_Metrica5 int,
  uf_G_Titulo nvarchar(max),
  uf_G_Tipo int
);

IF OBJECT_ID('ut_bi_Tablero', 'U') IS NULL
CREATE TABLE ut_bi_Tablero (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  uf_Nombre nvarchar(50),
  uf_FK_Usuario int
);

IF OBJECT_ID('ut_bi_TabIndicador', 'U') IS NULL
CREATE TABLE ut_bi_TabIndicador (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  uf_FK_Tablero int,
  uf_FK_Indicador int,
  uf_FK_Entidad int,
  uf_X int,
  uf_Y int,
  uf_W int,
  uf_H int,
  uf_pinicial int,
  uf_Periodos int,
  uf_l1 float,
  uf_l2 float,
  uf_l3 float,
  uf_l4 float,
  uf_l5 float,
  uf_l6 float,
  uf_l7 float,
  uf_l8 float
);

IF OBJECT_ID('ut_bi_Fig', 'U') IS NULL
CREATE TABLE ut_bi_Fig (
  Sys_PK int IDENTITY(1,1) PRIMARY KEY,
  uf_FK_Tablero int,
  uf_X int,
  uf_Y int,
  uf_W int,
  uf_H int,
  uf_Tipo int,
  uf_Fuente nvarchar(50) DEFAULT 'Arial',
  uf_Texto nvarchar(255) DEFAULT 'Arial',
  uf_TamFuente int,
  uf_atrib_fuente int,
  uf_color int,
  uf_fondo int,
  uf_alin int
);

-- Text columns with no length of their own hold any length. Databases made when
-- they had one are brought up to date here; the rows stay as they are.
ALTER TABLE ut_bi_Metrica ALTER COLUMN Sys_GUID nvarchar(max);
ALTER TABLE ut_bi_MatrizGraf ALTER COLUMN uf_G_Titulo nvarchar(max);

-- The lookups the component makes by parent or owner: the library's tree and
-- lists (by perspective, in name order), an indicator's configuration row, a
-- dashboard's children. Without them each is a scan of the whole table.

IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_Perspectiva_padre')
CREATE INDEX ix_bi_Perspectiva_padre ON ut_bi_Perspectiva (uf_padre, uf_Nombre);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_Metrica_Perspectiva')
CREATE INDEX ix_bi_Metrica_Perspectiva ON ut_bi_Metrica (uf_FK_Perspectiva, uf_Nombre);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_Indicador_Perspectiva')
CREATE INDEX ix_bi_Indicador_Perspectiva ON ut_bi_Indicador (uf_FK_Perspectiva, uf_Nombre);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_BarraProg_Indicador')
CREATE INDEX ix_bi_BarraProg_Indicador ON ut_bi_BarraProg (uf_FK_Indicador);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_Semaforo_Indicador')
CREATE INDEX ix_bi_Semaforo_Indicador ON ut_bi_Semaforo (uf_FK_Indicador);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_MatrizGraf_Indicador')
CREATE INDEX ix_bi_MatrizGraf_Indicador ON ut_bi_MatrizGraf (uf_FK_Indicador);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_TabIndicador_Tablero')
CREATE INDEX ix_bi_TabIndicador_Tablero ON ut_bi_TabIndicador (uf_FK_Tablero);
IF NOT EXISTS (SELECT * FROM sys.indexes WHERE name = 'ix_bi_Fig_Tablero')
CREATE INDEX ix_bi_Fig_Tablero ON ut_bi_Fig (uf_FK_Tablero);

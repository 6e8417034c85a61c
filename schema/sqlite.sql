-- The nine VendimarBI tables for SQLite. Safe to apply again: nothing is replaced.
-- Keys come from the database (INTEGER PRIMARY KEY AUTOINCREMENT never reuses a deleted key).
-- SQLite keeps a text of any length in any text column, whatever length its
-- type names, so a database made by an older version of this file needs no change.

CREATE TABLE IF NOT EXISTS ut_bi_Perspectiva (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  uf_Nombre varchar(50),
  uf_Entidad varchar(50),
  uf_Grupos varchar(1024),
  uf_padre INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_Metrica (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  Sys_GUID TEXT,
  uf_Nombre varchar(50),
  uf_Descripcion varchar(255),
  uf_Titulo varchar(100),
  uf_Decimales INTEGER,
  uf_Formato varchar(50),
  uf_Codigo varchar(16000),
  uf_FK_Perspectiva INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_Indicador (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  uf_Nombre varchar(50),
  uf_Tipo INTEGER,
  uf_FK_Perspectiva INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_BarraProg (
  uf_FK_Indicador INTEGER,
  uf_FK_Metrica INTEGER,
  uf_Dia_Min REAL,
  uf_Dia_Max REAL,
  uf_Dia_Color INTEGER,
  uf_Dia_ColorDebajo INTEGER,
  uf_Dia_ColorArriba INTEGER,
  uf_Semana_Min REAL,
  uf_Semana_Max REAL,
  uf_Semana_Color INTEGER,
  uf_Semana_ColorDebajo INTEGER,
  uf_Semana_ColorArriba INTEGER,
  uf_Mes_Min REAL,
  uf_Mes_Max REAL,
  uf_Mes_Color INTEGER,
  uf_Mes_ColorDebajo INTEGER,
  uf_Mes_ColorArriba INTEGER,
  uf_Ano_Min REAL,
  uf_Ano_Max REAL,
  uf_Ano_Color INTEGER,
  uf_Ano_ColorDebajo INTEGER,
  uf_Ano_ColorArriba INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_Semaforo (
  uf_FK_Indicador INTEGER,
  uf_FK_Metrica INTEGER,
  uf_Dia_Lim1 REAL,
  uf_Dia_Lim2 REAL,
  uf_Semana_Lim1 REAL,
  uf_Semana_Lim2 REAL,
  uf_Mes_Lim1 REAL,
  uf_Mes_Lim2 REAL,
  uf_Ano_Lim1 REAL,
  uf_Ano_Lim2 REAL,
  uf_Invertido INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_MatrizGraf (
  uf_FK_Indicador INTEGER,
  uf_FK_M_Metrica1 INTEGER,
  uf_FK_M_Metrica2 INTEGER,
  uf_FK_M_Metrica3 INTEGER,
  uf_FK_M_Metrica4 INTEGER,
  uf_FK_M_Metrica5 INTEGER,
  uf_FK_M_Metrica6 INTEGER,
  uf_FK_M_Metrica7 INTEGER,
  uf_FK_M_Metrica8 INTEGER,
  uf_FK_M_Metrica9 INTEGER,
  uf_FK_M_Metrica10 INTEGER,
  uf_FK_G_Metrica1 INTEGER,
  uf_FK_G_Metrica2 INTEGER,
  uf_FK_G_Metrica3 INTEGER,
  uf_FK_G_Metrica4 INTEGER,
  uf_FK_G_Metrica5 INTEGER,
  uf_G_Titulo TEXT,
  uf_G_Tipo INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_Tablero (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  uf_Nombre varchar(50),
  uf_FK_Usuario INTEGER
);

CREATE TABLE IF NOT EXISTS ut_bi_TabIndicador (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  uf_FK_Tablero INTEGER,
  uf_FK_Indicador INTEGER,
  uf_FK_Entidad INTEGER,
  uf_X INTEGER,
  uf_Y INTEGER,
  uf_W INTEGER,
  uf_H INTEGER,
  uf_pinicial INTEGER,
  uf_Periodos INTEGER,
  uf_l1 REAL,
  uf_l2 REAL,
  uf_l3 REAL,
  uf_l4 REAL,
  uf_l5 REAL,
  uf_l6 REAL,
  uf_l7 REAL,
  uf_l8 REAL
);

CREATE TABLE IF NOT EXISTS ut_bi_Fig (
  Sys_PK INTEGER PRIMARY KEY AUTOINCREMENT,
  uf_FK_Tablero INTEGER,
  uf_X INTEGER,
  uf_Y INTEGER,
  uf_W INTEGER,
  uf_H INTEGER,
  uf_Tipo INTEGER,
  uf_Fuente varchar(50) DEFAULT 'Arial',
  uf_Texto varchar(255) DEFAULT 'Arial',
  uf_TamFuente INTEGER,
  uf_atrib_fuente INTEGER,
  uf_color INTEGER,
  uf_fondo INTEGER,
  uf_alin INTEGER
);

-- The lookups the component makes by parent or owner: the library's tree and
-- lists (by perspective, in name order), an indicator's configuration row, a
-- dashboard's children. Without them each is a scan of the whole table.

CREATE INDEX IF NOT EXISTS ix_bi_Perspectiva_padre ON ut_bi_Perspectiva (uf_padre, uf_Nombre);
CREATE INDEX IF NOT EXISTS ix_bi_Metrica_Perspectiva ON ut_bi_Metrica (uf_FK_Perspectiva, uf_Nombre);
CREATE INDEX IF NOT EXISTS ix_bi_Indicador_Perspectiva ON ut_bi_Indicador (uf_FK_Perspectiva, uf_Nombre);
CREATE INDEX IF NOT EXISTS ix_bi_BarraProg_Indicador ON ut_bi_BarraProg (uf_FK_Indicador);
CREATE INDEX IF NOT EXISTS ix_bi_Semaforo_Indicador ON ut_bi_Semaforo (uf_FK_Indicador);
CREATE INDEX IF NOT EXISTS ix_bi_MatrizGraf_Indicador ON ut_bi_MatrizGraf (uf_FK_Indicador);
CREATE INDEX IF NOT EXISTS ix_bi_TabIndicador_Tablero ON ut_bi_TabIndicador (uf_FK_Tablero);
CREATE INDEX IF NOT EXISTS ix_bi_Fig_Tablero ON ut_bi_Fig (uf_FK_Tablero);
